#include "SpeechDispatcher.h"

#include <QLocalServer>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace kova;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

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

/// A speech service, which replies to each command.
class Service {
public:
    QList<Module> modules{eSpeak};
    QByteArray configured;   ///< the module configured for Japanese
    QByteArray hangsAt;      ///< a command without a reply
    int faults = 1;          ///< how often it hangs or dies
    QByteArrayList commands; ///< received
    QByteArrayList spoken;   ///< modules and texts

    Service() {
        m_server.listen(m_folder.filePath(u"socket"_s));
        qputenv("SPEECHD_ADDRESS", "unix_socket:" + m_server.fullServerName().toUtf8());
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
            m_client = m_server.nextPendingConnection();
            m_module = 0;
            m_isText = false;
            QObject::connect(m_client, &QLocalSocket::readyRead, &m_server, [this] { receive(); });
        });
    }

    void say(const QByteArray &bytes) {
        m_client->write(bytes);
        m_client->flush();
    }

    void hangUp() { m_client->disconnectFromServer(); }
    bool isLeft() const { return m_client->state() == QLocalSocket::UnconnectedState; }

private:
    void receive() {
        while (m_client->canReadLine()) {
            const QByteArray line = m_client->readLine().trimmed();
            commands.append(line);
            if (line == hangsAt && faults-- > 0) {
                m_client->disconnect(&m_server);
                return;
            }
            say(m_isText ? replyToText(line) : replyTo(line));
        }
    }

    QByteArray replyToText(const QByteArray &line) {
        const Module &module = modules.at(m_module);
        m_isText = line != ".";
        if (m_isText) {
            spoken.append(module.name + ' ' + line);
        } else if (module.reply.isEmpty() && faults-- > 0) {
            hangUp();
        }
        return m_isText ? QByteArray() : module.reply.isEmpty() ? accepted : module.reply;
    }

    QByteArray replyTo(const QByteArray &command) {
        const Module &module = modules.at(m_module);
        m_isText = command == "SPEAK";
        if (command.startsWith("SET SELF OUTPUT_MODULE ")) {
            select(command.mid(23));
        } else if (command == "SET SELF LANGUAGE ja") {
            select(configured);
        } else if (command == "GET OUTPUT_MODULE") {
            return module.name.isEmpty() ? "514 ERR\r\n" : "251-" + module.name + "\r\n251 OK\r\n";
        } else if (command == "LIST OUTPUT_MODULES") {
            QByteArray names;
            for (const Module &listed : modules) {
                names.prepend("250-" + listed.name + "\r\n");
            }
            return names + "250 OK\r\n";
        } else if (command == "LIST SYNTHESIS_VOICES") {
            if (module.name == eSpeak.name) {
                spoken.append("listed, which takes seconds");
            }
            return module.voices + "249 OK\r\n";
        }
        return m_isText ? "230 OK\r\n" : "200 OK\r\n";
    }

    void select(const QByteArray &name) {
        for (qsizetype index = 0; index < modules.size(); ++index) {
            m_module = modules.at(index).name == name ? index : m_module;
        }
    }

    QTemporaryDir m_folder;
    QLocalServer m_server;
    QLocalSocket *m_client = nullptr;
    qsizetype m_module = 0; ///< the current one
    bool m_isText = false;  ///< the next line is part of a text
};

using End = std::pair<quint64, bool>; // of an utterance, and whether it has finished

} // namespace

class SpeechDispatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The speech service cannot be started, MeCab can.
    void initTestCase() {
        const QString analyser = QStandardPaths::findExecutable(u"mecab"_s);
        QVERIFY(QFile::link(analyser, m_programs.filePath(u"mecab"_s)));
        qputenv("PATH", m_programs.path().toUtf8());
    }

    void init() {
        m_service.emplace();
        makeDispatcher({.reply = 1min}); // no timeout hides an unhandled reply
    }

    void cleanup() { m_dispatcher.reset(); }

    void utteranceIsSentAndItsEndReported() {
        const std::pair<QByteArray, bool> rows[] = {
            {accepted + ended, true},
            {accepted + "703-7\r\n703-1\r\n703 CANCELED\r\n", false},
            {ended + accepted, true},                                        // ended before it is accepted
            {accepted + "703-6\r\n703-1\r\n703 CANCELED\r\n" + ended, true}, // ended after another
            {"409 ERR\r\n", false},
        };
        for (const auto &[reply, finished] : rows) {
            init();
            m_service->modules[0].reply = reply;
            m_dispatcher->speak({.id = 1, .text = u".é\n..\r\nx"_s, .volume = -40});
            QTRY_COMPARE(m_ends, (QList<End>{{1, finished}}));
            QVERIFY(m_service->commands.contains("SET SELF VOLUME -40"));
            QCOMPARE(m_service->spoken, (QByteArrayList{"espeak-ng ..é", "espeak-ng ...", "espeak-ng x"}));
        }
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
            init();
            m_service->modules = row.modules;
            m_service->configured = row.configured;
            speak(1, "会議中");
            QTRY_COMPARE(m_service->spoken, row.spoken);
            // Other languages are spoken by the default module.
            speak(2, "meeting");
            QTRY_COMPARE(m_service->spoken, row.spoken + QByteArrayList{row.modules[0].name + " meeting"});
        }
    }

    void stoppedTextIsNotSpoken() {
        // Stopped before the text is sent,
        m_service->hangsAt = "SPEAK";
        m_service->faults = 2;
        speak(1, "first");
        QTRY_VERIFY(m_service->commands.contains("SPEAK"));
        m_dispatcher->stop(1);
        QTRY_VERIFY(m_service->isLeft());
        // by the deadline,
        speak(2, "second", QDeadlineTimer(500)); // enough to send the command on a busy machine
        QTRY_COMPARE(m_service->commands.count("SPEAK"), 2);
        QTRY_VERIFY(m_service->isLeft());
        // and while it is spoken.
        speak(3, "third");
        QTRY_COMPARE(m_service->spoken, QByteArrayList{"espeak-ng third"});
        m_dispatcher->stop(3);
        QTRY_COMPARE(m_service->commands.constLast(), QByteArray("CANCEL SELF"));
        QVERIFY(!m_service->isLeft());
        QCOMPARE(m_ends, QList<End>());
    }

    void newUtteranceReplacesTheCurrentOne() {
        speak(1, "first");
        QTRY_COMPARE(m_service->spoken, QByteArrayList{"espeak-ng first"});
        m_service->modules[0].reply = "225-8\r\n225 OK\r\n";
        speak(2, "second");
        QTRY_COMPARE(m_service->spoken, (QByteArrayList{"espeak-ng first", "espeak-ng second"}));
        QVERIFY(m_service->commands.contains("CANCEL SELF"));
        m_service->say("703-7\r\n703-1\r\n703 CANCELED\r\n702-8\r\n702-1\r\n702 END\r\n");
        QTRY_COMPARE(m_ends, (QList<End>{{2, true}}));
    }

    void faultyServiceIsReportedAndReconnected() {
        QByteArray endlessEvents;
        for (int message = 0; message < 5000; ++message) {
            endlessEvents += "702-" + QByteArray::number(message) + "\r\n702 END\r\n";
        }
        const QByteArray endlessLine(100'000, 'x');
        const QByteArray endlessReply = QByteArray("225-7\r\n").repeated(50'000);
        const QByteArray dies;
        const QByteArray diesWithinAReply = "22";
        for (const QByteArray &reply : {dies, diesWithinAReply, endlessEvents, endlessLine, endlessReply,
                                        QByteArray("\r\n"), QByteArray("HTTP/1.0 400 Bad Request\r\n")}) {
            init();
            m_service->modules[0].reply = reply;
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^kova-alarm: no speech: ."_s));
            speak(1, "first");
            QTRY_COMPARE(m_service->spoken, QByteArrayList{"espeak-ng first"});
            if (reply == diesWithinAReply) {
                m_service->hangUp();
            }
            QTRY_COMPARE(m_ends, (QList<End>{{1, false}}));
            m_service->modules[0].reply = accepted + ended;
            speak(2, "second");
            QTRY_COMPARE(m_ends, (QList<End>{{1, false}, {2, true}}));
        }
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
            m_service.emplace();
            m_service->modules = row.modules;
            m_service->hangsAt = row.hangsAt;
            m_service->faults = row.faults;
            makeDispatcher({.reply = 200ms, .retry = 1ms});
            if (row.isWarned) {
                QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^kova-alarm: no speech: ."_s));
            }
            QTest::failOnWarning(QRegularExpression(u"."_s));
            speak(1, "会議中", QDeadlineTimer(1min));
            QTRY_COMPARE(m_service->spoken, row.spoken);
            QCOMPARE(m_ends, QList<End>());
            m_service->say(ended);
            QTRY_COMPARE(m_ends, (QList<End>{{1, true}}));
        }
    }

    // Neither the death nor the hang of a module is reported by the service.
    void overdueTextIsSpokenAgain() {
        m_service->modules = {eSpeak, japanese};
        makeDispatcher({.retry = 1ms, .speech = 200ms});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^kova-alarm: the speech module"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^kova-alarm: no speech: ."_s));
        speak(1, "会議中", QDeadlineTimer(1min));
        QTRY_COMPARE(m_service->spoken,
                     (QByteArrayList{"jtalk 会議中", "espeak-ng カイギチュー", "jtalk 会議中"}));
    }

private:
    void speak(quint64 id, const char *text, QDeadlineTimer end = QDeadlineTimer::Forever) {
        m_dispatcher->speak({.id = id, .text = QString::fromUtf8(text), .volume = 0, .end = end});
    }

    void makeDispatcher(SpeechDispatcher::Timing timing) {
        m_ends.clear();
        const auto recordEnd = [this](quint64 id, bool finished) { m_ends.append({id, finished}); };
        m_dispatcher.emplace(recordEnd, timing);
    }

    const QTemporaryDir m_programs;
    std::optional<Service> m_service;
    QList<End> m_ends;
    std::optional<SpeechDispatcher> m_dispatcher;
};

QTEST_GUILESS_MAIN(SpeechDispatcherTest)
#include "SpeechDispatcherTest.moc"
