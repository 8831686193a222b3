#pragma once

namespace kova {

class SingleInstance;

/// Asks the running process to show its window, or warns the user that it is unresponsive. Returns the exit
/// status. Call before there is an application object; creates its own.
int wakeRunningInstance(const SingleInstance &instance, int argc, char *argv[]);

} // namespace kova
