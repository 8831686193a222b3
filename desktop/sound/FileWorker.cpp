#include "FileWorker.h"

#include <QPointer>
#include <QSemaphore>

namespace kova {

FileWorker::FileWorker() {
    constexpr int maxThreads = 32; // each alarm whose file is on a hung mount occupies one
    m_threads.setMaxThreadCount(maxThreads);
}

void FileWorker::start(QObject *owner, std::function<void()> work, std::function<void()> done) {
    const auto isDone = std::make_shared<bool>(false); // used by the main thread only
    const auto end = std::make_shared<QSemaphore>();
    const auto finish = [isDone, done = std::move(done), owner = QPointer(owner)] {
        if (!std::exchange(*isDone, true) && owner) {
            done();
        }
    };
    m_threads.start([this, end, finish, work = std::move(work)] {
        work();
        end->release();
        QMetaObject::invokeMethod(&m_receiver, finish, Qt::QueuedConnection);
    });
    if (end->tryAcquire(1, static_cast<int>(waitTimeout.count()))) {
        finish();
    }
}

} // namespace kova
