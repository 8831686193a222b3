#pragma once

#include <optional>

namespace kova {

/// Answers --help and --version and refuses what neither the program nor the toolkit knows, each with the
/// exit status to end with; none when the program is to start. Needs neither a display nor an application
/// object.
std::optional<int> answerArguments(int argc, const char *const argv[]);

} // namespace kova
