#pragma once

#include <QFontDatabase>
#include <QGuiApplication>
#include <qqmlregistration.h>

namespace kova {

/// The font families of the system font's designs.
class Fonts : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString monospaced READ monospaced CONSTANT)
    Q_PROPERTY(QString rounded READ rounded CONSTANT)

public:
    static QString monospaced() { return QFontDatabase::systemFont(QFontDatabase::FixedFont).family(); }

    /// The first installed rounded family, otherwise the system font. Cached, since every card uses it.
    static QString rounded() {
        static const QString family = firstRoundedFamily();
        return family;
    }

private:
    static QString firstRoundedFamily() {
        const QStringList installed = QFontDatabase::families(); // one query takes as long as all
        for (const char *family : {"Nunito", "M PLUS Rounded 1c", "Quicksand", "Varela Round", "Comfortaa",
                                   "Rounded Mplus 1c", "Baloo 2", "Fredoka", "Dosis"}) {
            if (installed.contains(QLatin1StringView(family))) {
                return QString::fromLatin1(family);
            }
        }
        return QGuiApplication::font().family();
    }
};

} // namespace kova
