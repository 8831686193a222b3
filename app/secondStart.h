#pragma once

namespace kova {

class SingleInstance;

/// A start that finds the program running already: has the running one show its window, or tells the user
/// that it does not answer. The exit status. Before any application object; makes its own.
int wakeRunningInstance(const SingleInstance &instance, int argc, char *argv[]);

} // namespace kova
