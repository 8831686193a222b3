#include "Fonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <array>

namespace kova {

QString Fonts::monospaced() const {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

QString Fonts::rounded() const {
    static constexpr std::array<QLatin1StringView, 9> families{
        QLatin1StringView("Nunito"),    QLatin1StringView("M PLUS Rounded 1c"),
        QLatin1StringView("Quicksand"), QLatin1StringView("Varela Round"),
        QLatin1StringView("Comfortaa"), QLatin1StringView("Rounded Mplus 1c"),
        QLatin1StringView("Baloo 2"),   QLatin1StringView("Fredoka"),
        QLatin1StringView("Dosis"),
    };
    for (const QLatin1StringView family : families) {
        if (QFontDatabase::hasFamily(family)) {
            return family;
        }
    }
    return QGuiApplication::font().family();
}

} // namespace kova
