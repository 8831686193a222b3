#include "SpeechDispatcher.h"

#include <QLocalServer>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace kova;
using namespace std::chrono_literals;

namespace {

/// The service's end of a connection, as the client sees it.
class Service {
public:
    Service() {
        m_server.listen(m_folder.filePath(QStringLiteral("socket")));
        qputenv("SPEECHD_ADDRESS", "unix_socket:" + m_server.fullServerName().toUtf8());
    }

    bool accept() {
        if (!QTest::qWaitFor([this] { return m_server.hasPendingConnections(); })) {
            return false;
        }
        m_client = m_server.nextPendingConnection();
        return true;
    }

    /// Replies to everything up to the SPEAK command.
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

protected:
    QTemporaryDir m_folder;
    QLocalServer m_server;
    QLocalSocket *m_client = nullptr;
    QByteArray m_read;
};

const QByteArray accepted = "225-7\r\n225 OK\r\n";
const QByteArray ended = "702-7\r\n702-1\r\n702 END\r\n";

/// An output module of the service. The default module comes first.
struct Module {
    QByteArray name;
    QByteArray voices; ///< the lines of its list
    QByteArray reply;  ///< to a text; the service dies if it is empty
};
const Module eSpeak{"espeak-ng", QByteArray("249-x\tja\tnone\r\n").repeated(13'000), accepted};
const Module english{"flite", "249-kal\ten\tMALE1\r\n", accepted};
const Module japanese{"jtalk", "249-bob\ten\tMALE1\r\n249-mei\tja-JP\tnone\r\n", accepted};

/// A service with modules, which replies to commands.
class ModuleService : public Service {
public:
    QList<Module> modules;
    QByteArray configured; ///< the module configured for Japanese
    QByteArray hangsAt;    ///< a command without a reply
    int faults = 1;        ///< how often it hangs or dies
    QByteArrayList spoken; ///< modules and texts

    ModuleService() {
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
            m_client = m_server.nextPendingConnection();
            m_module = modules.constFirst();
            m_isText = false;
            QObject::connect(m_client, &QLocalSocket::readyRead, &m_server, [this] { reply(); });
        });
    }

private:
    void reply() {
        while (m_client->canReadLine()) {
            const QByteArray line = m_client->readLine().trimmed();
            if (line == hangsAt && faults-- > 0) {
                m_client->disconnect(&m_server);
                return;
            }
            say(m_isText ? replyToText(line) : replyTo(line));
        }
    }

    QByteArray replyToText(const QByteArray &line) {
        m_isText = line != ".";
        if (m_isText) {
            spoken.append(m_module.name + ' ' + line);
        } else if (m_module.reply.isEmpty() && faults-- > 0) {
            hangUp();
        }
        return m_isText ? QByteArray() : m_module.reply.isEmpty() ? accepted : m_module.reply;
    }

    QByteArray replyTo(const QByteArray &command) {
        m_isText = command == "SPEAK";
        if (command.startsWith("SET SELF OUTPUT_MODULE ")) {
            select(command.mid(23));
        } else if (command == "SET SELF LANGUAGE ja") {
            select(configured);
        } else if (command == "GET OUTPUT_MODULE") {
            return m_module.name.isEmpty() ? "514 ERR\r\n" : "251-" + m_module.name + "\r\n251 OK\r\n";
        } else if (command == "LIST OUTPUT_MODULES") {
            QByteArray names;
            for (const Module &module : modules) {
                names.prepend("250-" + module.name + "\r\n");
            }
            return names + "250 OK\r\n";
        } else if (command == "LIST SYNTHESIS_VOICES") {
            if (m_module.name == eSpeak.name) {
                spoken.append("listed, which takes seconds");
            }
            return m_module.voices + "249 OK\r\n";
        }
        return m_isText ? "230 OK\r\n" : "200 OK\r\n";
    }

    void select(const QByteArray &name) {
        for (const Module &module : modules) {
            m_module = module.name == name ? module : m_module;
        }
    }

    Module m_module;
    bool m_isText = false;
};

struct End {
    quint64 utterance;
    bool finished;

    friend bool operator==(const End &, const End &) = default;
};

} // namespace

class SpeechDispatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The speech service cannot be started, MeCab can.
    void initTestCase() {
        const QString analyser = QStandardPaths::findExecutable(QStringLiteral("mecab"));
        QVERIFY(QFile::link(analyser, m_programs.filePath(QStringLiteral("mecab"))));
        qputenv("PATH", m_programs.path().toUtf8());
    }

    void init() {
        m_service.emplace();
        m_ends.clear();
        makeDispatcher({});
    }

    void cleanup() { m_dispatcher.reset(); }

    void utteranceIsSentAndItsEndReported_data() {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<bool>("finished");
        QTest::newRow("finished") << accepted + ended << true;
        QTest::newRow("cancelled") << accepted + "703-7\r\n703-1\r\n703 CANCELED\r\n" << false;
        QTest::newRow("ended before it is accepted") << ended + accepted << true;
        QTest::newRow("ended after another")
            << accepted + "703-6\r\n703-1\r\n703 CANCELED\r\n" + ended << true;
        QTest::newRow("refused") << QByteArray("409 ERR\r\n") << false;
    }

    void utteranceIsSentAndItsEndReported() {
        QFETCH(QByteArray, reply);
        QFETCH(bool, finished);
        m_dispatcher->speak({.id = 1, .text = QStringLiteral(".é\n..\r\nx"), .volume = -40});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak());
        QVERIFY(m_service->read().contains("SET SELF VOLUME -40\r\n"));
        QVERIFY(m_service->readUntil("\r\n.\r\n"));
        QCOMPARE(m_service->read(), QByteArray("..é\r\n...\r\nx\r\n.\r\n"));
        m_service->say(reply);
        QTRY_COMPARE(m_ends, (QList<End>{{1, finished}}));
    }

    void japaneseIsSpokenByTheBestModule() {
        const Module refusing{japanese.name, japanese.voices, "409 ERR\r\n"};
        const Module failing{japanese.name, japanese.voices, accepted + ended};
        const Module dead{japanese.name, eSpeak.voices, accepted};
        const Module other{"other", japanese.voices, accepted};
        const struct {
            QList<Module> modules;
            QByteArray configured;
            QByteArrayList spoken;
        } rows[] = {
            {{eSpeak, english}, {}, {"espeak-ng カイギチュー"}},
            {{eSpeak, english, japanese}, {}, {"jtalk 会議中"}},
            {{japanese, eSpeak, other}, {}, {"jtalk 会議中"}},
            {{eSpeak, japanese}, eSpeak.name, {"espeak-ng カイギチュー"}},
            {{eSpeak, dead}, {}, {"espeak-ng カイギチュー"}},
            {{eSpeak, refusing}, {}, {"jtalk 会議中", "espeak-ng カイギチュー"}},
            {{eSpeak, failing}, {}, {"jtalk 会議中", "espeak-ng カイギチュー"}},
            {{eSpeak, failing}, japanese.name, {"jtalk 会議中", "espeak-ng カイギチュー"}},
            {{{{}, {}, accepted}}, {}, {" 会議中"}},
        };
        for (const auto &row : rows) {
            ModuleService service;
            service.modules = row.modules;
            service.configured = row.configured;
            makeDispatcher({});
            m_dispatcher->speak({.id = 1, .text = QStringLiteral("会議中"), .volume = 0});
            QTRY_COMPARE(service.spoken, row.spoken);
            // Other languages are spoken by the default module.
            m_dispatcher->speak({.id = 2, .text = QStringLiteral("meeting"), .volume = 0});
            QTRY_COMPARE(service.spoken, row.spoken + QByteArrayList{row.modules[0].name + " meeting"});
        }
    }

    void stoppedTextIsNotSpoken() {
        // Stopped before the text is sent
        m_dispatcher->speak({.id = 1, .text = QStringLiteral("first"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->readUntil("SPEAK\r\n"));
        m_dispatcher->stop(1);
        QVERIFY(m_service->isLeft());
        m_dispatcher->speak({.id = 2, .text = QStringLiteral("second"), .volume = 0});
        m_dispatcher->stop(2);
        QVERIFY(m_service->accept() && m_service->isLeft());
        // and while it is spoken.
        m_dispatcher->speak({.id = 3, .text = QStringLiteral("third"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak() && m_service->readUntil("third\r\n.\r\n"));
        m_dispatcher->stop(3);
        QVERIFY(m_service->readUntil("CANCEL SELF\r\n"));
        // The deadline stops an utterance.
        m_dispatcher->speak(
            {.id = 4, .text = QStringLiteral("fourth"), .volume = 0, .end = QDeadlineTimer(1)});
        QVERIFY(m_service->isLeft());
        QCOMPARE(m_ends, QList<End>());
    }

    void newUtteranceReplacesTheCurrentOne() {
        m_dispatcher->speak({.id = 1, .text = QStringLiteral("first"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak() && m_service->readUntil("first\r\n.\r\n"));
        m_dispatcher->speak({.id = 2, .text = QStringLiteral("second"), .volume = 0});
        QVERIFY(m_service->readUntil("SPEAK\r\n"));
        QVERIFY(m_service->read().startsWith("CANCEL SELF\r\n"));
        m_service->say(accepted + "210 OK\r\n703-7\r\n703-1\r\n703 CANCELED\r\n218 OK\r\n230 OK\r\n");
        QVERIFY(m_service->readUntil("second\r\n.\r\n"));
        m_service->say("225-8\r\n225 OK\r\n702-8\r\n702-1\r\n702 END\r\n");
        QTRY_COMPARE(m_ends, (QList<End>{{2, true}}));
    }

    void faultyServiceIsReportedAndReconnected_data() {
        QTest::addColumn<QByteArray>("lastWords");
        QTest::newRow("dies") << QByteArray();
        QTest::newRow("dies within a reply") << QByteArray("22");
        QTest::newRow("speaks another protocol") << QByteArray("HTTP/1.0 400 Bad Request\r\n");
        QTest::newRow("sends an endless line") << QByteArray(100'000, 'x');
        QTest::newRow("sends an endless reply") << QByteArray("225-7\r\n").repeated(50'000);
        QByteArray ends;
        for (int message = 0; message < 5000; ++message) {
            ends += "702-" + QByteArray::number(message) + "\r\n702 END\r\n";
        }
        QTest::newRow("sends endless events") << ends;
        QTest::newRow("sends an empty line") << QByteArray("\r\n");
    }

    void faultyServiceIsReportedAndReconnected() {
        QFETCH(QByteArray, lastWords);
        m_dispatcher->speak({.id = 1, .text = QStringLiteral("first"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak() && m_service->readUntil("first\r\n.\r\n"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^kova-alarm: no speech: .")));
        m_service->say(lastWords);
        if (!lastWords.endsWith('\n') && lastWords.size() < 3) {
            m_service->hangUp();
        }
        QTRY_COMPARE(m_ends, (QList<End>{{1, false}}));
        m_dispatcher->speak({.id = 2, .text = QStringLiteral("second"), .volume = 0});
        QVERIFY(m_service->accept() && m_service->agreeToSpeak() && m_service->readUntil("second\r\n.\r\n"));
    }

    void alarmIsSpokenAgainWhenTheServiceIsBack() {
        const Module dying{eSpeak.name, {}, {}};
        const QByteArray kana = "espeak-ng カイギチュー";
        const struct {
            QList<Module> modules;
            QByteArray hangsAt;
            int faults;
            QByteArrayList spoken;
            bool isWarned = true;
        } rows[] = {
            {{dying}, {}, 1, {kana, kana}},
            {{dying}, {}, 3, {kana, kana, kana, kana}},
            {{eSpeak}, "SET SELF PRIORITY IMPORTANT", 2, {kana}},
            {{eSpeak}, "SPEAK", 1, {kana}},
            {{eSpeak}, ".", 1, {kana, kana}},
            {{eSpeak, japanese}, "LIST SYNTHESIS_VOICES", 100, {kana}, false},
        };
        for (const auto &row : rows) {
            ModuleService service;
            service.modules = row.modules;
            service.hangsAt = row.hangsAt;
            service.faults = row.faults;
            makeDispatcher({.reply = 200ms, .retry = 1ms});
            if (row.isWarned) {
                QTest::ignoreMessage(QtWarningMsg,
                                     QRegularExpression(QStringLiteral("^kova-alarm: no speech: .")));
            }
            QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
            m_dispatcher->speak(
                {.id = 1, .text = QStringLiteral("会議中"), .volume = 0, .end = QDeadlineTimer(1min)});
            QTRY_COMPARE(service.spoken, row.spoken);
            QCOMPARE(m_ends, QList<End>());
            service.say(ended);
            QTRY_COMPARE(m_ends, (QList<End>{{1, true}}));
        }
    }

    // Neither the death nor the hang of a module is reported by the service.
    void overdueTextIsSpokenAgain() {
        ModuleService service;
        service.modules = {eSpeak, japanese};
        makeDispatcher({.retry = 1ms, .speech = 200ms});
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("^kova-alarm: the speech module")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^kova-alarm: no speech: .")));
        m_dispatcher->speak(
            {.id = 1, .text = QStringLiteral("会議中"), .volume = 0, .end = QDeadlineTimer(1min)});
        QTRY_COMPARE(service.spoken,
                     (QByteArrayList{"jtalk 会議中", "espeak-ng カイギチュー", "jtalk 会議中"}));
    }

private:
    void makeDispatcher(SpeechDispatcher::Timing timing) {
        m_ends.clear();
        m_dispatcher.emplace(
            [this](quint64 utterance, bool finished) {
                m_ends.append({utterance, finished});
            },
            timing);
    }

    const QTemporaryDir m_programs;
    std::optional<Service> m_service;
    QList<End> m_ends;
    std::optional<SpeechDispatcher> m_dispatcher;
};

QTEST_GUILESS_MAIN(SpeechDispatcherTest)
#include "SpeechDispatcherTest.moc"
