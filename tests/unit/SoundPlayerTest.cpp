#include "SoundPlayer.h"

#include "FakeAudioPlayers.h"
#include "FakeBookmarks.h"
#include "FakeLog.h"
#include "FakeResources.h"
#include "FakeRunLoop.h"
#include "groups.h"

#include <QTest>

using namespace kova;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Sound = FakeAudioPlayers::Sound;

const QString glass = u"/resources/Sounds/morning_glass.mp3"_s;
const QString alarmId = u"alarm"_s;

QString base64(const QString &text) {
    return QString::fromLatin1(text.toUtf8().toBase64());
}

AlarmGroup custom(const QString &path) {
    AlarmGroup group = makeGroup(7, 0, 1, 1);
    group.volume = 0.35F;
    group.customSoundPath = base64(u"bookmark:"_s + path);
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

    void previewsReplaceEachOther() {
        const AlarmGroup a = makeGroup(7, 0, 1, 1);
        const AlarmGroup b = makeGroup(8, 0, 1, 1);
        m_player->togglePreview(a);
        QCOMPARE(m_player->currentPreviewId(), a.idText());
        QCOMPARE(m_audio.sounding, (QList<Sound>{{glass, 0.8F, 0}}));
        m_player->togglePreview(b);
        QCOMPARE(m_player->currentPreviewId(), b.idText());
        QCOMPARE(m_audio.sounding.size(), 1);
        m_player->preview(u"wakeup_pulse"_s, 0.5F);
        QCOMPARE(m_player->currentPreviewId(), u"__preview__"_s);
        QCOMPARE(m_audio.sounding, (QList<Sound>{{u"/resources/Sounds/wakeup_pulse.mp3"_s, 0.5F, 0}}));
        m_player->togglePreview(b);
        m_player->togglePreview(b);
        QVERIFY(isIdle());
        QVERIFY(m_log.lines.isEmpty());
    }

    void fileOnASlowDiskStartsLaterUnlessReplaced() {
        m_bookmarks.isSlow = true;
        const AlarmGroup group = custom(u"/slow.mp3"_s);
        const auto startedId = [&](const std::function<void()> &meanwhile) {
            m_player->stop();
            m_player->play(group, true, alarmId);
            const bool isEarly = !isIdle();
            meanwhile();
            m_bookmarks.respond();
            return isEarly ? u"early"_s : m_player->currentPreviewId();
        };
        QCOMPARE(startedId([] {}), alarmId);
        QCOMPARE(m_audio.sounding, (QList<Sound>{{u"/slow.mp3"_s, 0.35F, -1}}));
        QVERIFY(startedId([&] { m_player->stop(); }).isNull());
        QCOMPARE(startedId([&] { m_player->preview(u"wakeup_pulse"_s, 1); }), u"__preview__"_s);
        QCOMPARE(startedId([&] { m_player->play({}, false, u"x"_s); }), u"x"_s);
        QCOMPARE(startedId([&] { m_player->togglePreview(group); }), group.idText());
        QVERIFY(startedId([&] {
                    m_player->togglePreview(group);
                    m_player->togglePreview(group);
                }).isNull());
        m_bookmarks.lost.append(u"/slow.mp3"_s);
        QVERIFY(startedId([&] { m_player->togglePreview(group); }).isNull());
        QCOMPARE(m_log.lines.size(), 2);
        m_bookmarks.lost.clear();
        m_player->togglePreview(group); // the failed preview is not a pending one
        m_bookmarks.respond();
        QCOMPARE(m_player->currentPreviewId(), group.idText());
    }

    void failures() {
        m_bookmarks.lost.append(u"/lost.mp3"_s);
        m_audio.unreadable.insert(u"/text.txt"_s, u"not supported"_s);
        const QString rows[][3] = {
            {QString(), u"nope"_s, u"Sound not found: nope"_s},
            {u"%%%%"_s, u"morning_glass"_s, u"Sound not found: morning_glass"_s},
            {base64(u"bookmark:/a.mp3"_s).chopped(1), u"x"_s, u"Sound not found: x"_s}, // no padding
            {base64(u"bookmark:/lost.mp3"_s), u"morning_glass"_s,
             u"resolve bookmark error: no such file|[SoundPlayer] Sound not found: morning_glass"_s},
            {base64(u"bookmark:/text.txt"_s), QString(), u"play error: not supported"_s},
        };
        for (const auto &[customSoundPath, soundName, lines] : rows) {
            AlarmGroup group;
            group.customSoundPath = customSoundPath;
            group.soundName = soundName;
            m_player->play(group, true, alarmId);
            QCOMPARE(m_log.take().join(u'|'), u"[SoundPlayer] "_s + lines);
            QVERIFY(isIdle());
        }
    }

    void previewErrors() {
        const QStringList line{u"[SoundPlayer] preview error: broken"_s};
        m_player->preview(u"morning_glass"_s, 1);
        m_audio.fail(u"broken"_s, true);
        QVERIFY(isIdle());
        QCOMPARE(m_log.take(), line);
        m_audio.unreadable.insert(glass, u"broken"_s);
        m_player->preview(u"morning_glass"_s, 1);
        QCOMPARE(m_log.take(), line);
        m_player->preview(u"wakeup_pulse"_s, 1);
        m_player->preview(u"nope"_s, 1);
        QVERIFY(isIdle() && m_log.lines.isEmpty());
    }

    void failedSoundIsRetriedWhileItsAlarmRings() {
        const QString own = u"/own.mp3"_s;
        for (const auto &[group, path] : {std::pair(AlarmGroup(), glass), std::pair(custom(own), own)}) {
            m_player->play(group, true, alarmId);
            QCOMPARE(m_audio.maximumDuration, 55s);
            for (int failures = 1; failures <= 3; ++failures) {
                m_audio.fail(u"crashed"_s);
                QVERIFY(isIdle());
                m_runLoop.advance(1s);
                QCOMPARE(m_audio.sounding, (QList<Sound>{{path, group.volume, -1}}));
                QCOMPARE(m_audio.maximumDuration, 55s - failures * 1s);
                QCOMPARE(m_player->currentPreviewId(), alarmId);
            }
            QCOMPARE(m_log.take(), QStringList{u"[SoundPlayer] play error: crashed"_s});
            m_audio.fail(u"crashed"_s);
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
                    m_audio.fail(u"crashed"_s);
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
        m_player->play(custom(u"/own.mp3"_s), true, alarmId);
        m_audio.fail(u"crashed"_s);
        m_runLoop.advance(1s);
        m_audio.fail(u"not a sound"_s, true);
        QVERIFY(isIdle());
        m_runLoop.advance(6s);
        QCOMPARE(m_audio.opened, 2);
        QCOMPARE(m_log.take(), (QStringList{u"[SoundPlayer] play error: crashed"_s,
                                            u"[SoundPlayer] play error: not a sound"_s}));
        m_player->togglePreview({});
        m_audio.fail(u"crashed"_s);
        m_runLoop.advance(6s);
        QVERIFY(isIdle());
        QCOMPARE(m_audio.opened, 3);
    }

    void soundIsAlsoFoundAtTheTopLevel() {
        m_resources.files.insert(u"/resources/extra.mp3"_s);
        QCOMPARE(m_player->builtInSoundURL(u"extra"_s), u"/resources/extra.mp3"_s);
    }
};

QTEST_GUILESS_MAIN(SoundPlayerTest)
#include "SoundPlayerTest.moc"
