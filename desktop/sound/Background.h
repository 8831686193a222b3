#pragma once

#include <QObject>
#include <QThreadPool>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace kova {

/// Work that may have to wait for a disk, perhaps for ever: its threads can be given up. Main thread.
class Background {
public:
    /// How long the caller waits for a result.
    static constexpr std::chrono::milliseconds patience{40};

    Background();

    /// Runs `work` on another thread and hands its result to `done`: before the call returns where it is
    /// there in time, else from the event loop; never once the owner is gone.
    template <typename Work, typename Done> void run(QObject *owner, Work work, Done done) {
        const auto result = std::make_shared<std::optional<std::invoke_result_t<Work>>>();
        start(
            owner, [result, work = std::move(work)] { result->emplace(work()); },
            [result, done = std::move(done)] { done(**result); });
    }

    /// False while some work has not come to its end; the destructor then waits for it.
    bool isIdle() { return m_threads.waitForDone(0); }

private:
    void start(QObject *owner, std::function<void()> work, std::function<void()> done);

    QObject m_mainThread; ///< where late results arrive
    QThreadPool m_threads;
};

} // namespace kova
