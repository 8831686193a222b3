#include "SpeechDispatcher.h"

#include <QLocalServer>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace kova;

namespace {

// The service's side of one connection, as far as the client sees it.
class Service {
public:
    Service() {
        m_server.listen(m_folder.filePath(QStringLiteral("socket")));
        qputenv("SPEECHD_ADDRESS", "unix_socket:" + m_server.fullServerName().toUtf8());
    }

    bool isCalled() { return m_server.hasPendingConnections(); }

    bool accept() {
        if (!QTest::qWaitFor([this] { return isCalled(); })) {
            return false;
        }
        m_client = m_server.nextPendingConnection();
        return true;
    }

    /// Answers everything up to the announcement of a text.
    bool agreeToSpeak() {
        return readUntil("SPEAK\r\n") && say("208 OK\r\n220 OK\r\n220 OK\r\n202 OK\r\n218 OK\r\n230 OK\r\n");
    }

    bool readUntil(const QByteArray &end) {
        m_read.clear();
        return QTest::qWaitFor([this, &end] {
            m_read += m_client->readAll();
            return m_read.endsWith(end);
        });
    }

    bool say(const QByteArray &bytes) {
        m_client->write(bytes);
        return m_client->flush();
    }

    void hangUp() { m_client->disconnectFromServer(); }
    bool isLeft() {
        return QTest::qWaitFor([this] { return m_client->state() == QLocalSocket::UnconnectedState; });
    }
    const QByteArray &read() const { return m_read; }

private:
    QTemporaryDir m_folder;
    QLocalServer m_server;
    QLocalSocket *m_client = nullptr;
    QByteArray m_read;
};

struct End {
    quint64 reading;
    bool finished;

    friend bool operator==(const End &, const End &) = default;
};

} // namespace

class SpeechDispatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // No service can be started, but the analyser of Japanese.
    void initTestCase() {
        const QString analyser = QStandardPaths::findExecutable(QStringLiteral("mecab"));
        QVERIFY(QFile::link(analyser, m_programs.filePath(QStringLiteral("mecab"))));
        qputenv("PATH", m_programs.path().toUtf8());
    }

    void init() {
        m_service.emplace();
        m_ends.clear();
        m_dispatcher.emplace([this](quint64 reading, bool finished) { m_ends.append({reading, finished}); });
    }

    void cleanup() { m_dispatcher.reset(); }

    void aReadingIsSentAndItsEndTold_data() {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("finished");
        QTest::newRow("read to its end")
            << QByteArray("225-7\r\n225 OK\r\n702-7\r\n702-1\r\n702 END\r\n") << true;
        QTest::newRow("cancelled") << QByteArray("225-7\r\n225 OK\r\n703-7\r\n703-1\r\n703 CANCELED\r\n")
                                   << false;
        QTest::newRow("ended before its name is told")
            << QByteArray("702-7\r\n702-1\r\n702 END\r\n225-7\r\n225 OK\r\n") << true;
        QTest::newRow("not the first to end")
            << QByteArray("225-7\r\n225 OK\r\n703-6\r\n703-1\r\n703 C\r\n702-7\r\n702-1\r\n702 END\r\n")
            << true;
        QTest::newRow("refused") << QByteArray("409 ERR\r\n") << false;
    }

    void aReadingIsSentAndItsEndTold() {
        QFETCH(QByteArray, answer);
        QFETCH(bool, finished);
        m_dispatcher->read({.id = 1, .text = QStringLiteral(".é\n..\r\nx"), .volume = -40});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak());
        QVERIFY(m_service->read().contains("SET SELF VOLUME -40\r\n"));
        QVERIFY(m_service->readUntil("\r\n.\r\n"));
        QCOMPARE(m_service->read(), QByteArray("..é\r\n...\r\nx\r\n.\r\n"));
        m_service->say(answer);
        QTRY_COMPARE(m_ends, (QList<End>{{1, finished}}));
    }

    void japaneseIsSentInTheFormThatTheVoiceReads_data() {
        QTest::addColumn<QByteArray>("voice");
        QTest::addColumn<QByteArray>("form");
        QTest::newRow("kana alone") << QByteArray("251-espeak-ng\r\n251 OK\r\n") << QByteArray("カイギ");
        QTest::newRow("kanji too") << QByteArray("251-open-jtalk\r\n251 OK\r\n") << QByteArray("会議");
        QTest::newRow("unknown") << QByteArray("514 ERR\r\n") << QByteArray("会議");
    }

    void japaneseIsSentInTheFormThatTheVoiceReads() {
        QFETCH(QByteArray, voice);
        QFETCH(QByteArray, form);
        m_dispatcher->read({.id = 1, .text = QStringLiteral("会議"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->readUntil("SET SELF LANGUAGE ja\r\nGET OUTPUT_MODULE\r\n"));
        m_service->say("208 OK\r\n220 OK\r\n220 OK\r\n202 OK\r\n201 OK\r\n" + voice);
        QVERIFY(m_service->readUntil("SPEAK\r\n") && m_service->say("218 OK\r\n230 OK\r\n"));
        QVERIFY(m_service->readUntil("\r\n.\r\n"));
        QCOMPARE(m_service->read(), form + "\r\n.\r\n");
        // In another language the voice is the user's own again.
        m_dispatcher->read({.id = 2, .text = QStringLiteral("meeting"), .volume = 0});
        QVERIFY(m_service->isLeft() && m_service->accept() && m_service->agreeToSpeak());
        QVERIFY(!m_service->read().contains("LANGUAGE"));
    }

    void aStopIsNeverFollowedByTheText() {
        // Neither after the announcement
        m_dispatcher->read({.id = 1, .text = QStringLiteral("first"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->readUntil("SPEAK\r\n"));
        m_dispatcher->stop(1);
        QVERIFY(m_service->isLeft());
        m_dispatcher->read({.id = 2, .text = QStringLiteral("second"), .volume = 0});
        m_dispatcher->stop(2);
        QVERIFY(m_service->accept() && m_service->isLeft());
        // nor while it is read.
        m_dispatcher->read({.id = 3, .text = QStringLiteral("third"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak() && m_service->readUntil("third\r\n.\r\n"));
        m_dispatcher->stop(3);
        QVERIFY(m_service->readUntil("CANCEL SELF\r\n"));
        // At its end a reading stops by itself.
        m_dispatcher->read(
            {.id = 4, .text = QStringLiteral("fourth"), .volume = 0, .end = QDeadlineTimer(1)});
        QVERIFY(m_service->isLeft());
        QCOMPARE(m_ends, QList<End>());
    }

    void aNewReadingTakesThePlaceOfAnother() {
        m_dispatcher->read({.id = 1, .text = QStringLiteral("first"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak() && m_service->readUntil("first\r\n.\r\n"));
        m_dispatcher->read({.id = 2, .text = QStringLiteral("second"), .volume = 0});
        QVERIFY(m_service->readUntil("SPEAK\r\n"));
        QVERIFY(m_service->read().startsWith("CANCEL SELF\r\n"));
        m_service->say("225-7\r\n225 OK\r\n210 OK\r\n703-7\r\n703-1\r\n703 CANCELED\r\n218 OK\r\n230 OK\r\n");
        QVERIFY(m_service->readUntil("second\r\n.\r\n"));
        m_service->say("225-8\r\n225 OK\r\n702-8\r\n702-1\r\n702 END\r\n");
        QTRY_COMPARE(m_ends, (QList<End>{{2, true}}));
    }

    void aServiceThatFailsIsToldAndCalledAgain_data() {
        QTest::addColumn<QByteArray>("lastWords");
        QTest::newRow("dies") << QByteArray();
        QTest::newRow("dies in a word") << QByteArray("22");
        QTest::newRow("is no speech service") << QByteArray("HTTP/1.0 400 Bad Request\r\n");
        QTest::newRow("babbles") << QByteArray(100'000, 'x');
        QTest::newRow("never ends an answer") << QByteArray("225-7\r\n").repeated(5000);
        QByteArray ends;
        for (int message = 0; message < 5000; ++message) {
            ends += "702-" + QByteArray::number(message) + "\r\n702 END\r\n";
        }
        QTest::newRow("tells the end of anything") << ends;
        QTest::newRow("gives no text") << QByteArray("\r\n");
    }

    void aServiceThatFailsIsToldAndCalledAgain() {
        QFETCH(QByteArray, lastWords);
        m_dispatcher->read({.id = 1, .text = QStringLiteral("first"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak() && m_service->readUntil("first\r\n.\r\n"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^kova-alarm: no speech: .")));
        m_service->say(lastWords);
        if (!lastWords.endsWith('\n') && lastWords.size() < 3) {
            m_service->hangUp();
        }
        QTRY_COMPARE(m_ends, (QList<End>{{1, false}}));
        m_dispatcher->read({.id = 2, .text = QStringLiteral("second"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak() && m_service->readUntil("second\r\n.\r\n"));
    }

private:
    const QTemporaryDir m_programs;
    std::optional<Service> m_service;
    QList<End> m_ends;
    std::optional<SpeechDispatcher> m_dispatcher;
};

QTEST_GUILESS_MAIN(SpeechDispatcherTest)
#include "SpeechDispatcherTest.moc"
