#pragma once

#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <chrono>
#include <future>
#include <memory>

namespace kova {

/// Runs work that may block on a disk indefinitely, on threads that can be abandoned. Main thread.
class FileWorker {
public:
    /// How long run() waits for a result.
    static constexpr std::chrono::milliseconds waitTimeout{40};

    FileWorker() {
        constexpr int maxThreads = 32; // each alarm whose file is on a hung mount occupies one
        m_threads.setMaxThreadCount(maxThreads);
    }

    /// Runs `work` on another thread and passes the result to `done`: before returning if it is ready within
    /// the timeout, otherwise from the event loop; never after `owner` is destroyed.
    template <typename Work, typename Done> void run(QObject *owner, Work work, Done done) {
        const auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Work>()>>(std::move(work));
        const std::shared_future result = task->get_future().share();
        const auto finish = [result, done = std::move(done), owner = QPointer(owner),
                             isDone = std::make_shared<bool>(false)] {
            if (owner && !std::exchange(*isDone, true)) {
                done(result.get());
            }
        };
        m_threads.start([this, task, finish] {
            (*task)();
            QMetaObject::invokeMethod(&m_receiver, finish, Qt::QueuedConnection);
        });
        if (result.wait_for(waitTimeout) == std::future_status::ready) {
            finish();
        }
    }

    /// Returns false while work is unfinished. The destructor would wait for it.
    bool isIdle() { return m_threads.waitForDone(0); }

private:
    QObject m_receiver; ///< of late results, in the main thread
    QThreadPool m_threads;
};

} // namespace kova
