#pragma once

#include <QtGlobal>
#include <chrono>
#include <functional>
#include <memory>

class QObject;

namespace kova {

/// A running timer; destroying it ends it.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
};

/// The main thread's event loop, modal dialogs included. An action is dropped when its owner is gone.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    /// Runs the action just after each whole second of the wall clock, also after the clock was set.
    virtual std::unique_ptr<RepeatingTimer> everySecond(QObject *owner, std::function<void()> action) = 0;

    /// Runs the action once, the delay from now.
    virtual void after(std::chrono::milliseconds delay, QObject *owner, std::function<void()> action) = 0;
};

} // namespace kova
