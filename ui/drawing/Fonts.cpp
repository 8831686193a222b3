#include "Fonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <array>

namespace kova {

namespace {

QString firstRoundedFamily() {
    static constexpr std::array<QLatin1StringView, 9> families{
        QLatin1StringView("Nunito"),    QLatin1StringView("M PLUS Rounded 1c"),
        QLatin1StringView("Quicksand"), QLatin1StringView("Varela Round"),
        QLatin1StringView("Comfortaa"), QLatin1StringView("Rounded Mplus 1c"),
        QLatin1StringView("Baloo 2"),   QLatin1StringView("Fredoka"),
        QLatin1StringView("Dosis"),
    };
    const QStringList installed = QFontDatabase::families(); // one query takes as long as all
    for (const QLatin1StringView family : families) {
        if (installed.contains(family)) {
            return family;
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
