#include "Background.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>

using namespace kova;

class BackgroundTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsSlowHoldsNothingUp() {
        QSemaphore disk;
        QStringList told;
        auto owner = std::make_unique<QObject>();
        Background background;
        const auto wait = [&](const QString &name, QObject *asking) {
            background.run(
                asking,
                [&disk, name] {
                    disk.acquire();
                    return name;
                },
                [&told](const QString &result) { told.append(result); });
        };
        constexpr int stuck = 4;
        for (int number = 0; number < stuck; ++number) {
            wait(QStringLiteral("late"), number % 2 == 0 ? this : owner.get());
        }
        owner.reset();
        QVERIFY(told.isEmpty() && !background.isIdle());
        background.run(
            this, [] { return QThread::currentThread(); },
            [&](const QThread *thread) {
                told.append(thread == QThread::currentThread() ? QStringLiteral("main")
                                                               : QStringLiteral("other"));
            });
        QTRY_COMPARE(told, QStringList{QStringLiteral("other")});
        disk.release(stuck);
        QTRY_VERIFY(background.isIdle());
        QTRY_COMPARE(told.size(), 1 + stuck / 2);
        QCOMPARE(told.count(QStringLiteral("late")), stuck / 2);
    }
};

QTEST_GUILESS_MAIN(BackgroundTest)
#include "BackgroundTest.moc"
