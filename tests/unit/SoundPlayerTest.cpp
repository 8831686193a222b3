#include "SoundPlayer.h"

#include "FakeAudioPlayers.h"
#include "FakeBookmarks.h"
#include "FakeLog.h"
#include "FakeResources.h"
#include "FakeRunLoop.h"
#include "groups.h"

#include <QTest>

using namespace kova;
using namespace std::chrono_literals;

namespace {

using Sound = FakeAudioPlayers::Sound;

const QString glass = QStringLiteral("/resources/Sounds/morning_glass.mp3");
const QString alarmId = QStringLiteral("alarm");

QString base64(const QString &text) {
    return QString::fromLatin1(text.toUtf8().toBase64());
}

AlarmGroup custom(const QString &path) {
    AlarmGroup group = makeGroup(7, 0, 1, 1);
    group.customSoundPath = base64(QStringLiteral("bookmark:") + path);
    return group;
}

} // namespace

class SoundPlayerTest : public QObject {
    Q_OBJECT

    FakeAudioPlayers m_audio;
    FakeBookmarks m_bookmarks;
    FakeResources m_resources;
    FakeClock m_clock;
    FakeRunLoop m_runLoop{m_clock};
    FakeLog m_log;
    std::unique_ptr<SoundPlayer> m_player;

    bool isIdle() const {
        return m_audio.sounding.isEmpty() && !m_player->isPlaying() && m_player->currentPreviewId().isNull();
    }

private Q_SLOTS:
    void init() {
        m_audio = {};
        m_bookmarks = {};
        m_resources = {};
        m_log.lines.clear();
        m_player = std::make_unique<SoundPlayer>(m_audio, m_bookmarks, m_resources, m_runLoop, m_log);
    }
    void cleanup() { m_player.reset(); }

    void alarmLoopsAtItsVolumeUntilStopped() {
        AlarmGroup group;
        group.volume = 0.35F;
        m_player->play(group, true, alarmId);
        QCOMPARE(m_audio.sounding, (QList<Sound>{{glass, 0.35F, -1}}));
        QVERIFY(m_player->isPlaying());
        QCOMPARE(m_player->currentPreviewId(), alarmId);
        m_player->stop();
        QVERIFY(isIdle());
    }

    void previewsReplaceEachOther() {
        const AlarmGroup a = makeGroup(7, 0, 1, 1);
        const AlarmGroup b = makeGroup(8, 0, 1, 1);
        m_player->togglePreview(a);
        QCOMPARE(m_player->currentPreviewId(), a.idText());
        QCOMPARE(m_audio.sounding, (QList<Sound>{{glass, 0.8F, 0}}));
        m_player->togglePreview(b);
        QCOMPARE(m_player->currentPreviewId(), b.idText());
        QCOMPARE(m_audio.sounding.size(), 1);
        m_player->preview(QStringLiteral("wakeup_pulse"), 0.5F);
        QCOMPARE(m_player->currentPreviewId(), QStringLiteral("__preview__"));
        QCOMPARE(m_audio.sounding,
                 (QList<Sound>{{QStringLiteral("/resources/Sounds/wakeup_pulse.mp3"), 0.5F, 0}}));
        m_player->togglePreview(b);
        m_player->togglePreview(b);
        QVERIFY(isIdle());
        QVERIFY(m_log.lines.isEmpty());
    }

    void customFileTakesPrecedence() {
        m_player->play(custom(QStringLiteral("/music/海.mp3")), true, alarmId);
        QCOMPARE(m_audio.sounding.first().path, QStringLiteral("/music/海.mp3"));
        m_player->stop();
        AlarmGroup group;
        group.customSoundPath = QString();
        m_player->play(group, true, alarmId);
        QCOMPARE(m_audio.sounding.first().path, glass);
    }

    void fileOnASlowDiskStartsLaterUnlessReplaced() {
        m_bookmarks.isSlow = true;
        const AlarmGroup group = custom(QStringLiteral("/slow.mp3"));
        const auto startedId = [&](const std::function<void()> &meanwhile) {
            m_player->stop();
            m_player->play(group, true, alarmId);
            const bool isEarly = !isIdle();
            meanwhile();
            m_bookmarks.respond();
            return isEarly ? QStringLiteral("early") : m_player->currentPreviewId();
        };
        QCOMPARE(startedId([] {}), alarmId);
        QCOMPARE(m_audio.sounding, (QList<Sound>{{QStringLiteral("/slow.mp3"), 0.8F, -1}}));
        QVERIFY(startedId([&] { m_player->stop(); }).isNull());
        QCOMPARE(startedId([&] { m_player->preview(QStringLiteral("wakeup_pulse"), 1); }),
                 QStringLiteral("__preview__"));
        QCOMPARE(startedId([&] { m_player->play({}, false, QStringLiteral("x")); }), QStringLiteral("x"));
        QCOMPARE(startedId([&] { m_player->togglePreview(group); }), group.idText());
        QVERIFY(startedId([&] {
                    m_player->togglePreview(group);
                    m_player->togglePreview(group);
                }).isNull());
        m_bookmarks.lost.append(QStringLiteral("/slow.mp3"));
        QVERIFY(startedId([&] { m_player->togglePreview(group); }).isNull());
        QCOMPARE(m_log.lines.size(), 2);
        m_bookmarks.lost.clear();
        m_player->togglePreview(group); // the failed preview is not a pending one
        m_bookmarks.respond();
        QCOMPARE(m_player->currentPreviewId(), group.idText());
    }

    void failures() {
        m_bookmarks.lost.append(QStringLiteral("/lost.mp3"));
        m_audio.unreadable.insert(QStringLiteral("/text.txt"), QStringLiteral("not supported"));
        const struct {
            QString customSoundPath;
            const char *soundName;
            const char *lines;
        } rows[] = {
            {QString(), "nope", "Sound not found: nope"},
            {QStringLiteral("%%%%"), "morning_glass", "Sound not found: morning_glass"},
            {base64(QStringLiteral("bookmark:/a.mp3")).chopped(1), "x", "Sound not found: x"}, // no padding
            {base64(QStringLiteral("bookmark:/lost.mp3")), "morning_glass",
             "resolve bookmark error: no such file|[SoundPlayer] Sound not found: morning_glass"},
            {base64(QStringLiteral("bookmark:/text.txt")), "", "play error: not supported"},
        };
        for (const auto &row : rows) {
            AlarmGroup group;
            group.customSoundPath = row.customSoundPath;
            group.soundName = QString::fromLatin1(row.soundName);
            m_player->play(group, true, alarmId);
            QCOMPARE(m_log.take().join(u'|'),
                     QStringLiteral("[SoundPlayer] ") + QString::fromLatin1(row.lines));
            QVERIFY(isIdle());
        }
    }

    void previewErrors() {
        const QStringList line{QStringLiteral("[SoundPlayer] preview error: broken")};
        m_player->preview(QStringLiteral("morning_glass"), 1);
        m_audio.fail(QStringLiteral("broken"), true);
        QVERIFY(isIdle());
        QCOMPARE(m_log.take(), line);
        m_audio.unreadable.insert(glass, QStringLiteral("broken"));
        m_player->preview(QStringLiteral("morning_glass"), 1);
        QCOMPARE(m_log.take(), line);
        m_audio.unreadable.clear();
        m_player->preview(QStringLiteral("morning_glass"), 1);
        m_player->preview(QStringLiteral("nope"), 1);
        QVERIFY(isIdle() && m_log.lines.isEmpty());
    }

    void failedSoundIsRetriedWhileItsAlarmRings() {
        const QString own = QStringLiteral("/own.mp3");
        for (const auto &[group, path] : {std::pair(AlarmGroup(), glass), std::pair(custom(own), own)}) {
            m_player->play(group, true, alarmId);
            QCOMPARE(m_audio.maximumDuration, 55s);
            for (int failures = 1; failures <= 3; ++failures) {
                m_audio.fail(QStringLiteral("crashed"));
                QVERIFY(isIdle());
                m_runLoop.advance(1s);
                QCOMPARE(m_audio.sounding, (QList<Sound>{{path, 0.8F, -1}}));
                QCOMPARE(m_audio.maximumDuration, 55s - failures * 1s);
                QCOMPARE(m_player->currentPreviewId(), alarmId);
            }
            QCOMPARE(m_log.take(), QStringList{QStringLiteral("[SoundPlayer] play error: crashed")});
            m_audio.fail(QStringLiteral("crashed"));
            m_player->stop();
            m_runLoop.advance(6s);
            QVERIFY(isIdle());
        }
    }

    void soundThatKeepsFailingEarlyIsRetriedLessOften() {
        const auto retries = [this](std::chrono::seconds span, std::chrono::seconds played) {
            const int before = m_audio.opened;
            for (auto elapsed = 0s; elapsed < span; elapsed += 1s + played) {
                m_runLoop.advance(played);
                if (!m_audio.sounding.isEmpty()) {
                    m_audio.fail(QStringLiteral("crashed"));
                }
                m_runLoop.advance(1s);
            }
            return m_audio.opened - before;
        };
        m_player->play({}, true, alarmId);
        QCOMPARE(retries(28s, 0s), 3 + 5);
        QCOMPARE(retries(20s, 4s), 4);
        QCOMPARE(retries(100s, 0s), 6); // until 55 s are over
        QVERIFY(isIdle());
    }

    void rejectedFileAndPreviewAreNotRetried() {
        m_player->play(custom(QStringLiteral("/own.mp3")), true, alarmId);
        m_audio.fail(QStringLiteral("crashed"));
        m_runLoop.advance(1s);
        m_audio.fail(QStringLiteral("not a sound"), true);
        QVERIFY(isIdle());
        m_runLoop.advance(6s);
        QCOMPARE(m_audio.opened, 2);
        QCOMPARE(m_log.take(), (QStringList{QStringLiteral("[SoundPlayer] play error: crashed"),
                                            QStringLiteral("[SoundPlayer] play error: not a sound")}));
        m_player->togglePreview({});
        m_audio.fail(QStringLiteral("crashed"));
        m_runLoop.advance(6s);
        QVERIFY(isIdle());
        QCOMPARE(m_audio.opened, 3);
    }

    void soundsAreFoundInTheirFolderOrAtTheTopLevel() {
        m_resources.files.insert(QStringLiteral("/resources/extra.mp3"));
        QCOMPARE(m_player->builtInSoundURL(QStringLiteral("morning_glass")), glass);
        QCOMPARE(m_player->builtInSoundURL(QStringLiteral("extra")), QStringLiteral("/resources/extra.mp3"));
        QVERIFY(!m_player->builtInSoundURL(QStringLiteral("nope")));
    }
};

QTEST_GUILESS_MAIN(SoundPlayerTest)
#include "SoundPlayerTest.moc"
