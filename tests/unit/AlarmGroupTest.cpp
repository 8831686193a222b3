#include "AlarmGroupJson.h"
#include "FakeClock.h"

#include <QTest>
#include <cmath>
#include <limits>

using namespace kova;

namespace {

// A document of one group as a hand would write it; a test replaces one part of it.
const QByteArray goodGroup = R"({"id":"3f2504e0-4f89-41d3-9a0c-0305e82c3301","label":"朝","targetHour":6,
"targetMinute":30,"alarmCount":4,"intervalMinutes":5,"startBefore":false,"isEnabled":true,"repeatDays":[3,1],
"soundName":"wakeup_pulse","customSoundPath":"YWJj","customSoundName":"a.mp3","volume":0.35,"ttsEnabled":true,
"ttsMessage":"おはよう","ttsLastEnabled":false,"ttsLastMessage":"\n","ttsVolume":1,"createdAt":790000000.123456})";

QByteArray listWith(const QByteArray &part, const QByteArray &replacement) {
    QByteArray group = goodGroup;
    return "[" + group.replace(part, replacement) + "]";
}

} // namespace

class AlarmGroupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void newGroupHasTheDefaults() {
        FakeClock clock;
        clock.time = 790000000.25;
        const AlarmGroup group = makeGroup(clock);
        QVERIFY(!group.id.isNull() && group.id != makeGroup(clock).id);
        const QByteArray json = encodeGroups({group}).value();
        QByteArray expected =
            R"([{"alarmCount":3,"createdAt":790000000.25,"id":"ID","intervalMinutes":1,"isEnabled":true,"label":"",)"
            R"("repeatDays":[],"soundName":"morning_glass","startBefore":true,"targetHour":7,"targetMinute":0,)"
            R"("ttsEnabled":false,"ttsLastEnabled":false,"ttsLastMessage":"","ttsMessage":"","ttsVolume":1,)"
            R"("volume":0.8}])";
        expected.replace("ID", group.idText().toUtf8());
        QCOMPARE(json, expected);
        QVERIFY(decodeGroups(json).value() == QList{group});
    }

    void everyFieldSurvivesTheRoundTrip() {
        const QList<AlarmGroup> groups = decodeGroups(listWith("", "")).value();
        QCOMPARE(groups.size(), 1);
        const AlarmGroup &group = groups.first();
        QCOMPARE(group.idText(), QStringLiteral("3F2504E0-4F89-41D3-9A0C-0305E82C3301"));
        QCOMPARE(group.repeatDays, (QList<qint64>{3, 1}));
        QCOMPARE(group.volume, 0.35F);
        QCOMPARE(group.createdAt, 790000000.123456);
        const QByteArray json = encodeGroups(groups).value();
        QVERIFY(json.contains("\"id\":\"3F2504E0-4F89-41D3-9A0C-0305E82C3301\""));
        QVERIFY(json.contains("\"volume\":0.35,") || json.contains("\"volume\":0.35}"));
        QVERIFY(!json.contains(": ") && !json.contains("\n"));
        QVERIFY(decodeGroups(json).value() == groups);
    }

    void absentOptionalTextsAreLeftOut() {
        const QByteArray both = R"("customSoundPath":"YWJj","customSoundName":"a.mp3",)";
        for (const QByteArray &absent :
             {QByteArray(), QByteArray(R"("customSoundPath":null,"customSoundName":null,)")}) {
            QByteArray document = "[" + goodGroup + "]";
            document.replace(both, absent);
            const AlarmGroup group = decodeGroups(document).value().first();
            QVERIFY(!group.customSoundPath && !group.customSoundName);
            const QByteArray json = encodeGroups({group}).value();
            QVERIFY(!json.contains("custom") && !json.contains("null"));
        }
    }

    void everyFloatAndMomentReadsBackToTheLastBit() {
        AlarmGroup group;
        const QList<float> volumes{0.0F,   0.05F,         0.1F,  0.15F,       1.0F / 3,
                                   1e-45F, 3.4028235e38F, -0.7F, 16777217.0F, 7.038531e-26F};
        for (const float volume : volumes) {
            group.volume = group.ttsVolume = volume;
            group.createdAt = 790000000.0 + std::ldexp(static_cast<double>(volume) / 1e39, -3) + 1e-7;
            QVERIFY2(decodeGroups(encodeGroups({group}).value()).value().first() == group,
                     qPrintable(QString::number(volume)));
        }
    }

    void everyIntegerIsExact() {
        using Limits = std::numeric_limits<qint64>;
        AlarmGroup group;
        group.repeatDays = {9007199254740993, -9007199254740993, Limits::max(), Limits::min()};
        QCOMPARE(decodeGroups(encodeGroups({group}).value()).value().first().repeatDays, group.repeatDays);
    }

    void everyTextSurvives_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("quotes") << QStringLiteral("\"\\/'");
        QTest::newRow("control characters")
            << QString(QChar(u'\0')) + QStringLiteral("\x01\b\f\n\r\t\x1f\x7f");
        QTest::newRow("byte order marks") << QStringLiteral("\ufeff\ufeffa\ufeff");
        QTest::newRow("beyond the basic plane") << QStringLiteral("⏰𠮷\u2028\U0010FFFF");
    }
    void everyTextSurvives() {
        QFETCH(QString, text);
        AlarmGroup group;
        group.label = text;
        group.customSoundName = text;
        const QByteArray json = encodeGroups({group}).value();
        QCOMPARE(decodeGroups(json).value().first().label, text);
        QCOMPARE(decodeGroups(json).value().first().customSoundName, text);
    }

    void notFiniteVolumesAreNotEncoded() {
        for (const float volume :
             {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
            AlarmGroup loud;
            loud.volume = volume;
            AlarmGroup talkative;
            talkative.ttsVolume = volume;
            QVERIFY(!encodeGroups({AlarmGroup(), loud}));
            QVERIFY(!encodeGroups({talkative}));
        }
    }

    void decoding_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<bool>("isGood");
        const auto row = [](const char *name, bool isGood, const QByteArray &part,
                            const QByteArray &replacement) {
            QTest::newRow(name) << listWith(part, replacement) << isGood;
        };
        row("unchanged", true, "", "");
        row("a key twice", true, "\"targetHour\":6", "\"targetHour\":5,\"targetHour\":6");
        row("unknown keys", true, "{", R"({"future":{"a":[1,null]},)");
        row("7.0 is whole", true, "\"targetHour\":6", "\"targetHour\":7.0");
        row("1e2 is whole", true, "\"alarmCount\":4", "\"alarmCount\":1e2");
        row("largest integer", true, "\"targetHour\":6", "\"targetHour\":9223372036854775807");
        row("smallest integer", true, "\"targetHour\":6", "\"targetHour\":-9223372036854775808");
        row("integer too large", false, "\"targetHour\":6", "\"targetHour\":9223372036854775808");
        row("integer too small", false, "\"targetHour\":6", "\"targetHour\":-9223372036854775809");
        row("a fraction", false, "\"targetHour\":6", "\"targetHour\":7.5");
        row("a weekday with a fraction", false, "[3,1]", "[3,1.5]");
        row("a weekday as text", false, "[3,1]", "[3,\"1\"]");
        row("weekdays null", false, "[3,1]", "null");
        row("true is no number", false, "\"targetHour\":6", "\"targetHour\":true");
        row("text is no number", false, "\"volume\":0.35", "\"volume\":\"0.35\"");
        row("1 is not true", false, "\"isEnabled\":true", "\"isEnabled\":1");
        row("volume fits a float", true, "0.35", "3.4028234663852886e38");
        row("volume beyond a float", false, "0.35", "3.5e38");
        row("volume beyond a double", false, "0.35", "1e400");
        row("moment as an integer", true, "790000000.123456", "790000000");
        row("moment null", false, "790000000.123456", "null");
        row("label null", false, "\"朝\"", "null");
        row("path is a number", false, "\"YWJj\"", "7");
        row("upper-case id", true, "3f2504e0", "3F2504E0");
        row("id too short", false, "3f2504e0", "3f2504e");
        row("id in braces", false, "3f2504e0-4f89-41d3-9a0c-0305e82c3301",
            "{3f2504e0-4f89-41d3-9a0c-0305e82c3301}");
        row("id with a wrong digit", false, "3f2504e0", "3g2504e0");
        row("invalid UTF-8", false, "朝", "\xff\xfe");
        row("truncated", false, "790000000.123456}", "");
        for (const QByteArray key :
             {"id", "label", "targetHour", "targetMinute", "alarmCount", "intervalMinutes", "startBefore",
              "isEnabled", "repeatDays", "soundName", "volume", "ttsEnabled", "ttsMessage", "ttsLastEnabled",
              "ttsLastMessage", "ttsVolume", "createdAt"}) {
            QTest::addRow("without %s", key.constData())
                << listWith("\"" + key + "\":", "\"other\":") << false;
        }
        QTest::newRow("a mark of the encoding") << QByteArray("\ufeff[" + goodGroup + "]") << true;
        QTest::newRow("one bad element") << QByteArray("[" + goodGroup + ",{}]") << false;
        QTest::newRow("element null") << QByteArray("[null]") << false;
        QTest::newRow("an empty list") << QByteArray("[]") << true;
        QTest::newRow("an object") << QByteArray("{}") << false;
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

    void equalityComparesEveryField_data() {
        QTest::addColumn<QByteArray>("part");
        QTest::addColumn<QByteArray>("replacement");
        QTest::newRow("id") << QByteArray("3301") << QByteArray("3302");
        QTest::newRow("label") << QByteArray("朝") << QByteArray("昼");
        QTest::newRow("hour") << QByteArray("Hour\":6") << QByteArray("Hour\":5");
        QTest::newRow("minute") << QByteArray(":30,") << QByteArray(":31,");
        QTest::newRow("count") << QByteArray(":4,") << QByteArray(":5,");
        QTest::newRow("interval") << QByteArray(":5,") << QByteArray(":6,");
        QTest::newRow("direction") << QByteArray("Before\":false") << QByteArray("Before\":true");
        QTest::newRow("enabled") << QByteArray("isEnabled\":true") << QByteArray("isEnabled\":false");
        QTest::newRow("order of days") << QByteArray("[3,1]") << QByteArray("[1,3]");
        QTest::newRow("sound") << QByteArray("wakeup") << QByteArray("other");
        QTest::newRow("path") << QByteArray("\"YWJj\"") << QByteArray("\"\"");
        QTest::newRow("path absent") << QByteArray("\"YWJj\"") << QByteArray("null");
        QTest::newRow("file name") << QByteArray("a.mp3") << QByteArray("b.mp3");
        QTest::newRow("volume") << QByteArray("0.35") << QByteArray("0.4");
        QTest::newRow("speech") << QByteArray("ttsEnabled\":true") << QByteArray("ttsEnabled\":false");
        QTest::newRow("message") << QByteArray("おはよう") << QByteArray("");
        QTest::newRow("last speech") << QByteArray("LastEnabled\":false") << QByteArray("LastEnabled\":true");
        QTest::newRow("last message") << QByteArray("\\n") << QByteArray("\\t");
        QTest::newRow("speech volume") << QByteArray("Volume\":1") << QByteArray("Volume\":0.5");
        QTest::newRow("moment") << QByteArray("000.123456") << QByteArray("000.1234561");
    }
    void equalityComparesEveryField() {
        QFETCH(QByteArray, part);
        QFETCH(QByteArray, replacement);
        const AlarmGroup group = decodeGroups(listWith("", "")).value().first();
        QVERIFY(group == decodeGroups(listWith("", "")).value().first());
        QVERIFY(!(group == decodeGroups(listWith(part, replacement)).value().first()));
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
        AlarmGroup zero = composed;
        zero.volume = 0.0F;
        AlarmGroup negativeZero = zero;
        negativeZero.volume = -0.0F;
        QVERIFY(zero == negativeZero);
    }
};

QTEST_GUILESS_MAIN(AlarmGroupTest)
#include "AlarmGroupTest.moc"
