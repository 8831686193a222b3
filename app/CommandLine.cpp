#include "CommandLine.h"

#include "version.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace kova {

namespace {

constexpr int refused = 2;

constexpr const char *help =
    R"(Usage: kova-alarm [--help | --start-at-login | --version] [OPTION OF THE TOOLKIT]...
A desktop alarm clock. One runs for each user: starting it again brings its window to the front.

  --help            tell this and end
  --start-at-login  have the desktop start it at each login from now on, and end
  --version         tell the version and end

Options of the toolkit, Qt, are passed on, for example -platform xcb or -display :1.)";

// With a value in the next argument, or, some of them, after a "=".
constexpr std::array<std::string_view, 17> toolkitValues{
    "display",       "geometry",        "icon",        "name",         "platform", "platformpluginpath",
    "platformtheme", "plugin",          "session",     "style",        "title",    "stylesheet",
    "qmljsdebugger", "qwindowgeometry", "qwindowicon", "qwindowtitle", "visual"};
constexpr std::array<std::string_view, 4> toolkitSwitches{"dograb", "nograb", "reverse", "widgetcount"};

template <typename Names> bool contains(const Names &names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// How many arguments an option of the toolkit takes up, itself included; 0 when it is none.
int toolkitArguments(std::string_view argument) {
    if (!argument.starts_with('-')) {
        return 0;
    }
    argument.remove_prefix(argument.starts_with("--") ? 2 : 1);
    const size_t equals = argument.find('=');
    if (contains(toolkitValues, argument.substr(0, equals))) {
        return equals == std::string_view::npos ? 2 : 1;
    }
    return contains(toolkitSwitches, argument) ? 1 : 0;
}

} // namespace

std::optional<int> answerArguments(int argc, const char *const argv[]) {
    for (int i = 1; i < argc;) {
        const std::string_view argument = argv[i];
        if (argument == "--help") {
            std::puts(help);
            return 0;
        }
        if (argument == "--version") {
            std::printf("kova-alarm %s\n", version);
            return 0;
        }
        const int passed = toolkitArguments(argument);
        if (passed == 0) {
            std::fprintf(stderr, "kova-alarm: there is no option '%s'; see kova-alarm --help\n", argv[i]);
            return refused;
        }
        i += passed;
    }
    return std::nullopt;
}

} // namespace kova
