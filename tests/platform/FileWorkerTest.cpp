#include "FileWorker.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>

using namespace kova;

class FileWorkerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void slowWorkDoesNotBlock() {
        QSemaphore disk;
        int lateResults = 0;
        FileWorker worker;
        auto closed = std::make_unique<QObject>();
        for (QObject *owner : QList<QObject *>{this, closed.get(), this}) {
            worker.run(
                owner, [&disk] { return disk.tryAcquire(1, 10'000); },
                [&lateResults](bool) { lateResults += 1; });
        }
        closed.reset();
        QVERIFY(lateResults == 0 && !worker.isIdle());
        const QThread *other = nullptr;
        worker.run(
            this, [] { return QThread::currentThread(); }, [&other](const QThread *used) { other = used; });
        QTRY_VERIFY(other && other != thread());
        disk.release(3);
        QTRY_VERIFY(worker.isIdle());
        QTRY_COMPARE(lateResults, 2); // none for the owner that was closed
    }
};

QTEST_GUILESS_MAIN(FileWorkerTest)
#include "FileWorkerTest.moc"
