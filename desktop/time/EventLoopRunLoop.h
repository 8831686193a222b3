#pragma once

#include "RunLoop.h"

namespace kova {

/// Qt's event loop of the main thread.
class EventLoopRunLoop : public RunLoop {
public:
    std::unique_ptr<RepeatingTimer> everySecond(QObject *owner, std::function<void()> action) override;
    void after(std::chrono::milliseconds delay, QObject *owner, std::function<void()> action) override;
};

} // namespace kova
