#pragma once

#include <QtGlobal>
#include <chrono>
#include <functional>
#include <memory>

class QObject;

namespace kova {

/// The main thread's event loop, including modal dialogs. Actions of a destroyed owner are not run.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    /// Runs the action just after each whole second of the wall clock, and immediately when the clock is set,
    /// until the returned timer is destroyed.
    virtual std::unique_ptr<QObject> everySecond(QObject *owner, std::function<void()> action) = 0;

    virtual void after(std::chrono::milliseconds delay, QObject *owner, std::function<void()> action) = 0;
};

} // namespace kova
