#pragma once

#include <optional>

namespace kova {

/// Handles --help and --version, and reports arguments that neither the application nor Qt accepts. Returns
/// the exit status, or nullopt if the application is to start. Needs neither a display nor an application
/// object.
std::optional<int> parseArguments(int argc, const char *const argv[]);

} // namespace kova
