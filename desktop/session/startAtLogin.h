#pragma once

namespace kova {

/// Has the desktop start the program at each login: in a sandbox through the portal, which may ask the user,
/// else by an entry among the user's own. Returns the exit status of a program that does no more than this,
/// and tells on standard error why it can't be done.
int startAtLogin(int argc, char *argv[]);

} // namespace kova
