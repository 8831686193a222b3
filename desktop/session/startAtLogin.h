#pragma once

namespace kova {

/// Enables the start at each login: in a sandbox through the portal, which may ask the user, otherwise by an
/// autostart entry of the user's. Returns the exit status; reports an error on standard error.
int startAtLogin(int argc, char *argv[]);

} // namespace kova
