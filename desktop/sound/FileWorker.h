#pragma once

#include <QObject>
#include <QThreadPool>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace kova {

/// Runs work that may block on a disk indefinitely, on threads that can be abandoned. Main thread.
class FileWorker {
public:
    /// How long run() waits for a result.
    static constexpr std::chrono::milliseconds waitTimeout{40};

    FileWorker();

    /// Runs `work` on another thread and passes the result to `done`: before returning if it is ready within
    /// the timeout, otherwise from the event loop; never after `owner` is destroyed.
    template <typename Work, typename Done> void run(QObject *owner, Work work, Done done) {
        const auto result = std::make_shared<std::optional<std::invoke_result_t<Work>>>();
        start(
            owner, [result, work = std::move(work)] { result->emplace(work()); },
            [result, done = std::move(done)] { done(**result); });
    }

    /// Returns false while work is unfinished. The destructor would wait for it.
    bool isIdle() { return m_threads.waitForDone(0); }

private:
    void start(QObject *owner, std::function<void()> work, std::function<void()> done);

    QObject m_receiver; ///< of late results, in the main thread
    QThreadPool m_threads;
};

} // namespace kova
