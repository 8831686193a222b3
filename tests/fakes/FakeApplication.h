#pragma once

#include "Application.h"

namespace kova {

/// Counts the calls.
class FakeApplication : public Application {
public:
    int activations = 0;
    int windowsShown = 0;
    int terminations = 0;

    void activate() override { activations += 1; }
    void showMainWindow() override { windowsShown += 1; }
    void terminate() override { terminations += 1; }
};

} // namespace kova
