#include "TTSPlayer.h"

#include "FakeLog.h"
#include "FakeRunLoop.h"
#include "FakeSpeechSynthesizers.h"

#include <QTest>

using namespace kova;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TTSPlayerTest : public QObject {
    Q_OBJECT

    FakeClock m_clock;
    FakeSpeechSynthesizers m_speech;
    FakeLog m_log;
    std::unique_ptr<FakeRunLoop> m_runLoop;
    std::unique_ptr<TTSPlayer> m_player;

    const QString m_first = u"朝です"_s;
    const QString m_second = u"起きて"_s;

private Q_SLOTS:
    void init() {
        m_speech = {};
        m_log.lines.clear();
        m_runLoop = std::make_unique<FakeRunLoop>(m_clock);
        m_player = std::make_unique<TTSPlayer>(m_speech, *m_runLoop, m_log);
    }
    void cleanup() { m_player.reset(); }

    void loopedMessageRepeatsAfterAPause() {
        m_player->speak(m_first, 0.8F, true);
        QCOMPARE(m_speech.timeLimit, 55s);
        for (int round = 1; round <= 3; ++round) {
            QCOMPARE(m_speech.volume, 0.8F);
            QCOMPARE(m_speech.reading, m_first);
            m_speech.finish();
            m_runLoop->advance(1499ms);
            QCOMPARE(m_speech.readings.size(), round);
            m_runLoop->advance(1ms);
        }
        QCOMPARE(m_log.lines, QStringList{u"[TTSPlayer] speaking: \"朝です\" vol=0.8 loop=true"_s});
    }

    void messageWithoutLoopIsSpokenOnce() {
        m_player->speak(m_first, 1, false);
        QVERIFY(!m_speech.timeLimit);
        m_speech.finish();
        m_runLoop->advance(60s);
        QCOMPARE(m_speech.readings, QStringList{m_first});
    }

    void interruptedOrStoppedMessageIsNotRepeated() {
        for (const bool isStopped : {false, true}) {
            m_speech = {};
            m_player->speak(m_first, 1, true);
            m_speech.finish(isStopped);
            m_runLoop->advance(1s);
            if (isStopped) {
                m_player->stop();
            }
            m_runLoop->advance(60s);
            QCOMPARE(m_speech.readings.size(), 1);
        }
        m_player->speak(m_first, 1, true);
        m_player->speak(QString(), 1, true);
        QVERIFY(m_speech.reading.isNull());
        QCOMPARE(m_log.lines.size(), 3);
    }

    void pendingRepeatDoesNotReplaceANewMessage() {
        m_player->speak(m_first, 1, true);
        m_speech.finish();
        m_runLoop->advance(1s);
        m_player->speak(m_second, 1, true);
        m_runLoop->advance(10s);
        QCOMPARE(m_speech.readings, (QStringList{m_first, m_second}));
        m_speech.finish();
        m_runLoop->advance(1500ms);
        QCOMPARE(m_speech.readings, (QStringList{m_first, m_second, m_second}));
    }

    void volumesAreLoggedInShortestForm() {
        const std::pair<float, QString> rows[] = {
            {0.0F, u"0.0"_s}, {0.05F, u"0.05"_s}, {1.0F / 3, u"0.33333334"_s}, {1e-7F, u"1e-07"_s}};
        for (const auto &[volume, text] : rows) {
            m_player->speak(u"%1 %2"_s, volume, false);
            QCOMPARE(m_log.take().constFirst(),
                     u"[TTSPlayer] speaking: \"%1 %2\" vol="_s + text + u" loop=false"_s);
        }
    }
};

QTEST_GUILESS_MAIN(TTSPlayerTest)
#include "TTSPlayerTest.moc"
