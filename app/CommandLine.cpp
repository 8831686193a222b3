#include "CommandLine.h"

#include "version.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
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

// The value follows as the next argument or, for some of them, after "=".
constexpr std::array<std::string_view, 17> qtOptions{
    "display",       "geometry",        "icon",        "name",         "platform", "platformpluginpath",
    "platformtheme", "plugin",          "session",     "style",        "title",    "stylesheet",
    "qmljsdebugger", "qwindowgeometry", "qwindowicon", "qwindowtitle", "visual"};
constexpr std::array<std::string_view, 4> qtSwitches{"dograb", "nograb", "reverse", "widgetcount"};

template <typename Names> bool contains(const Names &names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Returns the number of arguments that a Qt option occupies, including itself; 0 if it is not a Qt option.
int qtArgumentCount(std::string_view argument) {
    if (!argument.starts_with('-')) {
        return 0;
    }
    argument.remove_prefix(argument.starts_with("--") ? 2 : 1);
    const size_t equals = argument.find('=');
    if (contains(qtOptions, argument.substr(0, equals))) {
        return equals == std::string_view::npos ? 2 : 1;
    }
    return contains(qtSwitches, argument) ? 1 : 0;
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
        const int count = qtArgumentCount(argument);
        if (count == 0) {
            std::fprintf(stderr, "kova-alarm: unknown argument '%s'; see kova-alarm --help\n", argv[i]);
            return unknownArgument;
        }
        i += count;
    }
    return std::nullopt;
}

} // namespace kova
