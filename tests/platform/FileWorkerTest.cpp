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
        QStringList results;
        auto owner = std::make_unique<QObject>();
        FileWorker worker;
        const auto wait = [&](const QString &name, QObject *context) {
            worker.run(
                context,
                [&disk, name] {
                    disk.acquire();
                    return name;
                },
                [&results](const QString &result) { results.append(result); });
        };
        constexpr int blocked = 4;
        for (int number = 0; number < blocked; ++number) {
            wait(QStringLiteral("late"), number % 2 == 0 ? this : owner.get());
        }
        owner.reset();
        QVERIFY(results.isEmpty() && !worker.isIdle());
        worker.run(
            this, [] { return QThread::currentThread(); },
            [&](const QThread *thread) {
                results.append(thread == QThread::currentThread() ? QStringLiteral("main")
                                                                  : QStringLiteral("other"));
            });
        QTRY_COMPARE(results, QStringList{QStringLiteral("other")});
        disk.release(blocked);
        QTRY_VERIFY(worker.isIdle());
        QTRY_COMPARE(results.size(), 1 + blocked / 2);
        QCOMPARE(results.count(QStringLiteral("late")), blocked / 2);
    }
};

QTEST_GUILESS_MAIN(FileWorkerTest)
#include "FileWorkerTest.moc"
