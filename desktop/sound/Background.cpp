#include "Background.h"

#include <QPointer>
#include <QSemaphore>

namespace kova {

Background::Background() {
    constexpr int manyStuck = 32; // an alarm on a dead mount leaves a thread behind
    m_threads.setMaxThreadCount(manyStuck);
}

void Background::start(QObject *owner, std::function<void()> work, std::function<void()> done) {
    const auto isDone = std::make_shared<bool>(false); // only the main thread looks at it
    const auto end = std::make_shared<QSemaphore>();
    const auto finish = [isDone, done = std::move(done), owner = QPointer(owner)] {
        if (!std::exchange(*isDone, true) && owner) {
            done();
        }
    };
    m_threads.start([this, end, finish, work = std::move(work)] {
        work();
        end->release();
        QMetaObject::invokeMethod(&m_mainThread, finish, Qt::QueuedConnection);
    });
    if (end->tryAcquire(1, static_cast<int>(patience.count()))) {
        finish();
    }
}

} // namespace kova
