#include "AlarmGroupJson.h"
#include "FakeClock.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <cmath>
#include <limits>

using namespace kova;
using namespace Qt::StringLiterals;

namespace {

// A hand-written group; the tests replace one part of it.
const QByteArray goodGroup = R"({"id":"3f2504e0-4f89-41d3-9a0c-0305e82c3301","label":"朝","targetHour":6,
"targetMinute":30,"alarmCount":4,"intervalMinutes":5,"startBefore":false,"isEnabled":true,"repeatDays":[3,1],
"soundName":"wakeup_pulse","customSoundPath":"YWJj","customSoundName":"a.mp3","volume":0.35,"ttsEnabled":true,
"ttsMessage":"おはよう","ttsLastEnabled":false,"ttsLastMessage":"\n","ttsVolume":1,"createdAt":790000000.123456})";

QByteArray listWith(const QByteArray &part, const QByteArray &replacement) {
    return QByteArray("[" + goodGroup + "]").replace(part, replacement);
}

/// A change of a valid list, and the reason why the result is invalid, or nothing if it is valid.
struct Change {
    const char *name;
    const char *part;
    const char *replacement;
    const char *reason;
};

constexpr Change replacements[] = {
    {"a key twice", R"("targetHour":6)", R"("targetHour":5,"targetHour":6)", ""},
    {"unknown keys", "{", R"({"future":{"a":[1,null]},)", ""},
    {"7.0 is whole", ":6,", ":7.0,", ""},
    {"smallest integer", ":6,", ":-9223372036854775808,", ""},
    {"integer too large", ":6,", ":9223372036854775808,", R"("targetHour": not an integer of 64 bits)"},
    {"integer too small", ":6,", ":-9223372036854775809,", R"("targetHour": not an integer of 64 bits)"},
    {"whole with an exponent", ":6,", ":70.0e-1,", ""},
    {"integer far too large", ":6,", ":1e99999999999,", R"("targetHour": not an integer of 64 bits)"},
    {"a fraction", ":6,", ":7.5,", R"("targetHour": not an integer of 64 bits)"},
    {"a fraction of a large number", ":6,", ":-9223372036854775808.5,",
     R"("targetHour": not an integer of 64 bits)"},
    {"a fraction in a list", "[3,1]", "[3,1.5]", R"("repeatDays": not an integer of 64 bits)"},
    {"a fraction without digits", "790000000.123456", "7.", R"("createdAt": not a number)"},
    {"an exponent without digits", "790000000.123456", "7e", R"("createdAt": not a number)"},
    {"a leading zero", "790000000.123456", "07", R"("createdAt": not a number)"},
    {"a number too large", "790000000.123456", "1e999", R"("createdAt": number out of range)"},
    {"a number too large in an unknown key", "{", R"({"future":1e999,)", ""},
    {"invalid JSON in an unknown key", "{", R"({"\n":7.,)", R"(" ": not a number)"},
    {"an unknown escape", "\\n", "\\x41", R"("ttsLastMessage": not a valid text)"},
    {"an incomplete escape", "\\n", "\\u+41", R"("ttsLastMessage": not a valid text)"},
    {"an escape with a prefix", "\\n", "\\u0x41", R"("ttsLastMessage": not a valid text)"},
    {"an escape with spaces", "\\n", "\\u41  ", R"("ttsLastMessage": not a valid text)"},
    {"a line break in a text", "\\n", "\n", R"("ttsLastMessage": not a valid text)"},
    {"null for a text", "\"朝\"", "null", R"("label": not a text)"},
    {"no comma", ",\"label\"", "\"label\"", "invalid JSON"},
    {"a comma too many", "123456}", "123456,}", "not a text"},
    {"1 is not true", "true", "1", R"("isEnabled": not true or false)"},
    {"volume fits a float", "0.35", "3.4028234663852886e38", ""},
    {"volume beyond a float", "0.35", "3.5e38", R"("volume": number out of range)"},
    {"text for a number", "0.35", R"("loud")", R"("volume": not a number)"},
    {"upper-case id", "3f2504e0", "3F2504E0", ""},
    {"no id", "3f2504e0", "", R"("id": not a UUID)"},
    {"truncated", "790000000.123456}", "", R"("createdAt": not a number)"},
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

    void everyValueReadsBackExactly() {
        using Limits = std::numeric_limits<qint64>;
        AlarmGroup group;
        group.label = u"\ufeff\"\\/'\0\x01\b\f\n\r\t\x1f\x7f⏰𠮷\u2028\U0010FFFF\ufeff"_s;
        group.repeatDays = {9007199254740993, -9007199254740993, Limits::max(), Limits::min()};
        const QList<float> volumes{0.0F,   0.05F,         0.1F,  0.15F,       1.0F / 3,
                                   1e-45F, 3.4028235e38F, -0.7F, 16777217.0F, 7.038531e-26F};
        for (const float volume : volumes) {
            group.volume = group.ttsVolume = volume;
            group.createdAt = 790000000.0 + std::ldexp(static_cast<double>(volume) / 1e39, -3) + 1e-7;
            const AlarmGroup again = decodeGroups(encodeGroups({group})).value().first();
            QVERIFY2(again == group && again.label == group.label, qPrintable(QString::number(volume)));
        }
    }

    void decoding_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("error");
        for (const auto &[name, part, replacement, reason] : replacements) {
            QTest::newRow(name) << listWith(part, replacement)
                                << (*reason ? u"group 1: "_s + QString::fromUtf8(reason) : QString());
        }
        const QStringList keys = QJsonDocument::fromJson(goodGroup).object().keys();
        for (const QString &key : keys) {
            QTest::addRow("without %s", qPrintable(key))
                << listWith("\"" + key.toUtf8() + "\":", "\"other\":")
                << (key.startsWith(u"custom") ? QString() : u"group 1: \"%1\" is missing"_s.arg(key));
        }
        const QString notAList = u"not a list of groups"_s;
        const QString notAnObject = u"group 1: invalid JSON"_s;
        const QByteArray nested = QByteArray(100000, '[') + QByteArray(100000, ']');
        QTest::newRow("a mark of the encoding") << QByteArray("\ufeff[" + goodGroup + "]") << QString();
        QTest::newRow("one bad element")
            << QByteArray("[" + goodGroup + ",{}]") << u"group 2: \"id\" is missing"_s;
        QTest::newRow("nested in an unknown key")
            << listWith("{", "{\"future\":" + nested + ",") << u"group 1: \"future\": nested too deeply"_s;
        QTest::newRow("element null") << QByteArray("[null]") << notAnObject;
        QTest::newRow("an empty list") << QByteArray("[]") << QString();
        QTest::newRow("an object") << QByteArray("{}") << notAList;
        QTest::newRow("two lists") << QByteArray("[][]") << notAList;
        QTest::newRow("a NUL after the list") << QByteArray("[]\0", 3) << notAList;
        QTest::newRow("nothing") << QByteArray() << notAList;
        QTest::newRow("invalid UTF-8") << QByteArray(100000, '\xa5') << u"invalid UTF-8"_s;
        QTest::newRow("nested 100,000 deep") << nested << notAnObject;
    }
    void decoding() {
        QFETCH(QByteArray, json);
        const auto groups = decodeGroups(json);
        QTEST(groups ? QString() : groups.error(), "error");
    }

    void everyKeyIsOneFieldAndAffectsEquality() {
        const QList<std::tuple<QByteArray, QByteArray, std::function<void(AlarmGroup &)>>> changes{
            {"3301", "3302", [](AlarmGroup &g) { g.id = QUuid("3f2504e0-4f89-41d3-9a0c-0305e82c3302"); }},
            {"朝", "昼", [](AlarmGroup &g) { g.label = u"昼"_s; }},
            {"Hour\":6", "Hour\":5", [](AlarmGroup &g) { g.targetHour = 5; }},
            {":30,", ":31,", [](AlarmGroup &g) { g.targetMinute = 31; }},
            {":4,", ":5,", [](AlarmGroup &g) { g.alarmCount = 5; }},
            {":5,", ":6,", [](AlarmGroup &g) { g.intervalMinutes = 6; }},
            {"Before\":false", "Before\":true", [](AlarmGroup &g) { g.startBefore = true; }},
            {"isEnabled\":true", "isEnabled\":false", [](AlarmGroup &g) { g.isEnabled = false; }},
            {"[3,1]", "[3,1,0]", [](AlarmGroup &g) { g.repeatDays.append(0); }},
            {"wakeup", "other", [](AlarmGroup &g) { g.soundName = u"other_pulse"_s; }},
            {"\"YWJj\"", "\"\"", [](AlarmGroup &g) { g.customSoundPath = QString(); }},
            {"\"YWJj\"", "null", [](AlarmGroup &g) { g.customSoundPath.reset(); }},
            {"a.mp3", "b.mp3", [](AlarmGroup &g) { g.customSoundName = u"b.mp3"_s; }},
            {"0.35", "0.4", [](AlarmGroup &g) { g.volume = 0.4F; }},
            {"ttsEnabled\":true", "ttsEnabled\":false", [](AlarmGroup &g) { g.ttsEnabled = false; }},
            {"おはよう", "", [](AlarmGroup &g) { g.ttsMessage.clear(); }},
            {"LastEnabled\":false", "LastEnabled\":true", [](AlarmGroup &g) { g.ttsLastEnabled = true; }},
            {"\\n", "\\t", [](AlarmGroup &g) { g.ttsLastMessage = u"\t"_s; }},
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
        composed.label = u"が"_s;
        AlarmGroup other = composed;
        other.label = u"\u304b\u3099"_s;
        QVERIFY(composed.label != other.label && composed == other);
        other.volume = std::numeric_limits<float>::quiet_NaN();
        QVERIFY(!(other == other));
    }
};

QTEST_GUILESS_MAIN(AlarmGroupTest)
#include "AlarmGroupTest.moc"
