#pragma once

#include <QtGlobal>
#include <chrono>
#include <functional>
#include <memory>

class QObject;

namespace kova {

/// A running timer, which stops when it is destroyed.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
};

/// The main thread's event loop, including modal dialogs. Actions of a destroyed owner are not run.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    /// Runs the action just after each whole second of the wall clock, and immediately when the clock is set.
    virtual std::unique_ptr<RepeatingTimer> everySecond(QObject *owner, std::function<void()> action) = 0;

    /// Runs the action once, after the delay.
    virtual void after(std::chrono::milliseconds delay, QObject *owner, std::function<void()> action) = 0;
};

} // namespace kova
