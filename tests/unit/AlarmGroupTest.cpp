#include "AlarmGroupJson.h"
#include "FakeClock.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <cmath>
#include <limits>

using namespace kova;

namespace {

// A hand-written group; the tests replace one part of it.
const QByteArray goodGroup = R"({"id":"3f2504e0-4f89-41d3-9a0c-0305e82c3301","label":"朝","targetHour":6,
"targetMinute":30,"alarmCount":4,"intervalMinutes":5,"startBefore":false,"isEnabled":true,"repeatDays":[3,1],
"soundName":"wakeup_pulse","customSoundPath":"YWJj","customSoundName":"a.mp3","volume":0.35,"ttsEnabled":true,
"ttsMessage":"おはよう","ttsLastEnabled":false,"ttsLastMessage":"\n","ttsVolume":1,"createdAt":790000000.123456})";

QByteArray listWith(const QByteArray &part, const QByteArray &replacement) {
    return QByteArray("[" + goodGroup + "]").replace(part, replacement);
}

/// A change of a valid list, and whether the result is valid.
struct Change {
    const char *name;
    bool isGood;
    const char *part;
    const char *replacement;
};

constexpr Change replacements[] = {
    {"a key twice", true, "\"targetHour\":6", "\"targetHour\":5,\"targetHour\":6"},
    {"unknown keys", true, "{", R"({"future":{"a":[1,null]},)"},
    {"7.0 is whole", true, "\"targetHour\":6", "\"targetHour\":7.0"},
    {"smallest integer", true, "\"targetHour\":6", "\"targetHour\":-9223372036854775808"},
    {"integer too large", false, "\"targetHour\":6", "\"targetHour\":9223372036854775808"},
    {"integer too small", false, "\"targetHour\":6", "\"targetHour\":-9223372036854775809"},
    {"whole with an exponent", true, "\"targetHour\":6", "\"targetHour\":70.0e-1"},
    {"integer far too large", false, "\"targetHour\":6", "\"targetHour\":1e99999999999"},
    {"a fraction", false, "\"targetHour\":6", "\"targetHour\":7.5"},
    {"a fraction of a large number", false, "\"targetHour\":6", "\"targetHour\":-9223372036854775808.5"},
    {"a fraction without digits", false, "790000000.123456", "7."},
    {"an exponent without digits", false, "790000000.123456", "7e"},
    {"a leading zero", false, "790000000.123456", "07"},
    {"a number too large", false, "790000000.123456", "1e999"},
    {"a number too large in an unknown key", true, "{", R"({"future":1e999,)"},
    {"invalid JSON in an unknown key", false, "{", R"({"future":7.,)"},
    {"an unknown escape", false, "\\n", "\\x41"},
    {"an incomplete escape", false, "\\n", "\\u+41"},
    {"a line break in a text", false, "\\n", "\n"},
    {"null for a text", false, "\"朝\"", "null"},
    {"two values", false, "}]", "}]]"},
    {"no comma", false, ",\"label\"", "\"label\""},
    {"a comma too many", false, "123456}", "123456,}"},
    {"1 is not true", false, "\"isEnabled\":true", "\"isEnabled\":1"},
    {"volume fits a float", true, "0.35", "3.4028234663852886e38"},
    {"volume beyond a float", false, "0.35", "3.5e38"},
    {"upper-case id", true, "3f2504e0", "3F2504E0"},
    {"invalid UTF-8", false, "朝", "\xff\xfe"},
    {"truncated", false, "790000000.123456}", ""},
};

} // namespace

class AlarmGroupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void newGroupHasTheDefaults() {
        FakeClock clock;
        clock.time = 790000000.25;
        const AlarmGroup group = makeGroup(clock);
        QVERIFY(!group.id.isNull() && group.id != makeGroup(clock).id);
        const QByteArray json = encodeGroups({group});
        QByteArray expected =
            R"([{"alarmCount":3,"createdAt":790000000.25,"id":"ID","intervalMinutes":1,"isEnabled":true,"label":"",)"
            R"("repeatDays":[],"soundName":"morning_glass","startBefore":true,"targetHour":7,"targetMinute":0,)"
            R"("ttsEnabled":false,"ttsLastEnabled":false,"ttsLastMessage":"","ttsMessage":"","ttsVolume":1,)"
            R"("volume":0.8}])";
        expected.replace("ID", group.idText().toUtf8());
        QCOMPARE(json, expected);
        QVERIFY(decodeGroups(json).value() == QList{group});
    }

    void everyNumberReadsBackToTheLastBit() {
        using Limits = std::numeric_limits<qint64>;
        AlarmGroup group;
        group.repeatDays = {9007199254740993, -9007199254740993, Limits::max(), Limits::min()};
        const QList<float> volumes{0.0F,   0.05F,         0.1F,  0.15F,       1.0F / 3,
                                   1e-45F, 3.4028235e38F, -0.7F, 16777217.0F, 7.038531e-26F};
        for (const float volume : volumes) {
            group.volume = group.ttsVolume = volume;
            group.createdAt = 790000000.0 + std::ldexp(static_cast<double>(volume) / 1e39, -3) + 1e-7;
            QVERIFY2(decodeGroups(encodeGroups({group})).value().first() == group,
                     qPrintable(QString::number(volume)));
        }
    }

    void everyTextSurvives() {
        for (const QString &text :
             {QStringLiteral("\"\\/'"), QChar(u'\0') + QStringLiteral("\x01\b\f\n\r\t\x1f\x7f"),
              QStringLiteral("\ufeff\ufeffa\ufeff"), QStringLiteral("⏰𠮷\u2028\U0010FFFF")}) {
            AlarmGroup group;
            group.label = text;
            QCOMPARE(decodeGroups(encodeGroups({group})).value().first().label, text);
        }
    }

    void nonFiniteVolumesCannotBeEncoded() {
        for (const float volume :
             {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
            for (float AlarmGroup::*const field : {&AlarmGroup::volume, &AlarmGroup::ttsVolume}) {
                AlarmGroup group;
                group.*field = volume;
                QVERIFY(!canEncode({AlarmGroup(), group}));
            }
        }
    }

    void decoding_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<bool>("isGood");
        for (const Change &change : replacements) {
            QTest::newRow(change.name) << listWith(change.part, change.replacement) << change.isGood;
        }
        const QStringList keys = QJsonDocument::fromJson(goodGroup).object().keys();
        for (const QString &key : keys) {
            QTest::addRow("without %s", qPrintable(key))
                << listWith("\"" + key.toUtf8() + "\":", "\"other\":") << key.startsWith(u"custom");
        }
        QTest::newRow("a mark of the encoding") << QByteArray("\ufeff[" + goodGroup + "]") << true;
        QTest::newRow("one bad element") << QByteArray("[" + goodGroup + ",{}]") << false;
        QTest::newRow("nested in an unknown key")
            << listWith("{", "{\"future\":" + QByteArray(100000, '[') + QByteArray(100000, ']') + ",")
            << false;
        QTest::newRow("element null") << QByteArray("[null]") << false;
        QTest::newRow("an empty list") << QByteArray("[]") << true;
        QTest::newRow("an object") << QByteArray("{}") << false;
        QTest::newRow("a NUL after the list") << QByteArray("[]\0", 3) << false;
        QTest::newRow("nothing") << QByteArray() << false;
        QTest::newRow("junk") << QByteArray(100000, '\xa5') << false;
        QTest::newRow("nested 100,000 deep") << QByteArray(100000, '[') << false;
        QTest::newRow("nested and closed") << QByteArray(100000, '[') + QByteArray(100000, ']') << false;
    }
    void decoding() {
        QFETCH(QByteArray, json);
        QFETCH(bool, isGood);
        const auto groups = decodeGroups(json);
        QCOMPARE(static_cast<bool>(groups), isGood);
        if (!groups) {
            QVERIFY(!groups.error().isEmpty());
        }
    }

    void failuresNameGroupKeyAndReason() {
        const std::pair<QByteArray, const char *> rows[] = {
            {listWith("0.35", "\"loud\""), R"(group 1: "volume": not a number)"},
            {"[" + goodGroup + "," + QByteArray(goodGroup).replace("\"volume\"", "\"v\"") + "]",
             R"(group 2: "volume" is missing)"},
            {listWith("3f2504e0", ""), R"(group 1: "id": not a UUID)"},
            {listWith("[3,1]", "[3,1.5]"), R"(group 1: "repeatDays": not an integer of 64 bits)"},
            {listWith("{\"id\"", "{\"\\n\":7.,\"id\""), R"(group 1: " ": not a number)"},
            {"{}", "not a list of groups"},
            {"[\xff]", "invalid UTF-8"},
        };
        for (const auto &[json, reason] : rows) {
            QCOMPARE(decodeGroups(json).error(), QString::fromLatin1(reason));
        }
    }

    void everyKeyIsOneFieldAndAffectsEquality() {
        const QList<std::tuple<QByteArray, QByteArray, std::function<void(AlarmGroup &)>>> changes{
            {"3301", "3302", [](AlarmGroup &g) { g.id = QUuid("3f2504e0-4f89-41d3-9a0c-0305e82c3302"); }},
            {"朝", "昼", [](AlarmGroup &g) { g.label = QStringLiteral("昼"); }},
            {"Hour\":6", "Hour\":5", [](AlarmGroup &g) { g.targetHour = 5; }},
            {":30,", ":31,", [](AlarmGroup &g) { g.targetMinute = 31; }},
            {":4,", ":5,", [](AlarmGroup &g) { g.alarmCount = 5; }},
            {":5,", ":6,", [](AlarmGroup &g) { g.intervalMinutes = 6; }},
            {"Before\":false", "Before\":true", [](AlarmGroup &g) { g.startBefore = true; }},
            {"isEnabled\":true", "isEnabled\":false", [](AlarmGroup &g) { g.isEnabled = false; }},
            {"[3,1]", "[1,3]",
             [](AlarmGroup &g) {
                 g.repeatDays = {1, 3};
             }},
            {"wakeup", "other", [](AlarmGroup &g) { g.soundName = QStringLiteral("other_pulse"); }},
            {"\"YWJj\"", "\"\"", [](AlarmGroup &g) { g.customSoundPath = QString(); }},
            {"\"YWJj\"", "null", [](AlarmGroup &g) { g.customSoundPath.reset(); }},
            {"a.mp3", "b.mp3", [](AlarmGroup &g) { g.customSoundName = QStringLiteral("b.mp3"); }},
            {"0.35", "0.4", [](AlarmGroup &g) { g.volume = 0.4F; }},
            {"ttsEnabled\":true", "ttsEnabled\":false", [](AlarmGroup &g) { g.ttsEnabled = false; }},
            {"おはよう", "", [](AlarmGroup &g) { g.ttsMessage.clear(); }},
            {"LastEnabled\":false", "LastEnabled\":true", [](AlarmGroup &g) { g.ttsLastEnabled = true; }},
            {"\\n", "\\t", [](AlarmGroup &g) { g.ttsLastMessage = QStringLiteral("\t"); }},
            {"Volume\":1", "Volume\":0.5", [](AlarmGroup &g) { g.ttsVolume = 0.5F; }},
            {"000.123456", "000.1234561", [](AlarmGroup &g) { g.createdAt = 790000000.1234561; }},
        };
        const AlarmGroup group = decodeGroups(listWith("", "")).value().first();
        for (const auto &[part, replacement, change] : changes) {
            AlarmGroup changed = group;
            change(changed);
            QVERIFY2(!(changed == group), replacement);
            QVERIFY2(decodeGroups(listWith(part, replacement)).value() == QList{changed}, replacement);
            QVERIFY2(decodeGroups(encodeGroups({changed})).value() == QList{changed}, replacement);
        }
    }

    void equalityOfTextsAndNumbersIsByValue() {
        AlarmGroup composed;
        composed.label = QStringLiteral("が");
        AlarmGroup decomposed = composed;
        decomposed.label = QStringLiteral("\u304b\u3099");
        QVERIFY(composed.label != decomposed.label && composed == decomposed);
        AlarmGroup notANumber = composed;
        notANumber.volume = std::numeric_limits<float>::quiet_NaN();
        QVERIFY(!(notANumber == notANumber));
    }
};

QTEST_GUILESS_MAIN(AlarmGroupTest)
#include "AlarmGroupTest.moc"
