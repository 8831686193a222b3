#include "CommandLine.h"

#include "version.h"

#include <cstdio>
#include <cstdlib>
#include <regex>
#include <string_view>

namespace kova {

namespace {

constexpr int unknownArgument = 2;

constexpr const char *englishHelp =
    R"(Usage: kova-alarm [--help | --start-at-login | --version] [QT OPTION]...
A desktop alarm clock. One instance runs per user; starting it again shows its window.

  --help            show this help and exit
  --start-at-login  start the application at each login, and exit
  --version         show the version and exit

Options of Qt are passed on, for example -platform xcb or -display :1.)";

constexpr const char *japaneseHelp =
    R"(使い方: kova-alarm [--help | --start-at-login | --version] [Qt のオプション]...
デスクトップ用の目覚まし時計です。ユーザーごとに 1 つだけ起動し、もう一度起動するとそのウィンドウを表示します。

  --help            この使い方を表示して終了します
  --start-at-login  ログイン時に自動起動するように設定して終了します
  --version         バージョンを表示して終了します

-platform xcb や -display :1 などの Qt のオプションは、Qt に渡します。)";

// The first of the variables that is set and not empty names the language, as POSIX defines it for messages.
bool isJapaneseLocale() {
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char *value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            const std::string_view locale = value;
            return locale.substr(0, locale.find_first_of("_.@")) == "ja";
        }
    }
    return false;
}

// Returns the number of arguments that a Qt option occupies, including itself; 0 if it is not a Qt option.
int qtArgumentCount(const char *argument) {
    static const std::regex flag("--?(dograb|nograb|reverse|widgetcount)");
    static const std::regex option("--?(display|geometry|icon|name|platform|platformpluginpath|platformtheme|"
                                   "plugin|qmljsdebugger|qwindowgeometry|qwindowicon|qwindowtitle|session|"
                                   "style|stylesheet|title|visual)(=[^]*)?");
    if (std::cmatch match; std::regex_match(argument, match, option)) {
        return match[2].matched ? 1 : 2; // the value follows "=" or as the next argument
    }
    return std::regex_match(argument, flag) ? 1 : 0;
}

} // namespace

std::optional<int> parseArguments(int argc, const char *const argv[]) {
    for (int i = 1; i < argc;) {
        const std::string_view argument = argv[i];
        if (argument == "--help") {
            std::puts(isJapaneseLocale() ? japaneseHelp : englishHelp);
            return 0;
        }
        if (argument == "--version") {
            std::printf("kova-alarm %s\n", version);
            return 0;
        }
        const int count = qtArgumentCount(argv[i]);
        if (count == 0) {
            std::fprintf(stderr, "kova-alarm: unknown argument '%s'; see kova-alarm --help\n", argv[i]);
            return unknownArgument;
        }
        i += count;
    }
    return std::nullopt;
}

} // namespace kova
