#include "Fonts.h"

#include <QFontDatabase>
#include <QGuiApplication>

namespace kova {

namespace {

QString firstRoundedFamily() {
    const QStringList installed = QFontDatabase::families(); // one query takes as long as all
    for (const char *family : {"Nunito", "M PLUS Rounded 1c", "Quicksand", "Varela Round", "Comfortaa",
                               "Rounded Mplus 1c", "Baloo 2", "Fredoka", "Dosis"}) {
        if (installed.contains(QLatin1StringView(family))) {
            return QString::fromLatin1(family);
        }
    }
    return QGuiApplication::font().family();
}

} // namespace

QString Fonts::monospaced() const {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

// Cached, since every card uses it.
QString Fonts::rounded() const {
    static const QString family = firstRoundedFamily();
    return family;
}

} // namespace kova
