#include "AlarmGroupJson.h"
#include "WindowFixture.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace kova;
using namespace Qt::StringLiterals;

namespace {

const QString edits = u"edits"_s;

// Returns everything that a control can change, by name.
QVariantMap stateOf(WholeWindow &w) {
    QStringList groups;
    QStringList marks;
    for (const AlarmGroup &group : w.store.groups()) {
        const QString label = group.label.isEmpty() ? u"無"_s : group.label;
        groups << label + (group.isEnabled ? u""_s : u"-"_s);
        marks << label + (w.home.selection()->selected().ids.contains(group.id) ? u"+"_s : u""_s);
    }
    QString sounds;
    for (const FakeAudioPlayers::Sound &sound : w.services.audioPlayers.sounding) {
        sounds += u"%1 at %2%3"_s.arg(QFileInfo(sound.path).baseName())
                      .arg(sound.volume)
                      .arg(sound.loops == 0 ? u"" : u" looped");
    }
    QVariantMap state{
        {u"groups"_s, groups.join(u' ')},
        {u"saved"_s, w.services.listStorage.stored() == encodeGroups(w.store.groups())},
        {u"marks"_s, marks.join(u' ')},
        {u"editMode"_s, w.home.selection()->editMode()},
        {u"asks"_s, w.home.selection()->showDeleteConfirm()},
        {u"rings"_s, w.home.isRinging()},
        {u"alert"_s, w.shows("stopButton")},
        {u"menu"_s, w.all("menuItem").size()},
        {u"list"_s, w.shows("pickerItem")},
        {u"sounds"_s, sounds},
    };
    if (!w.services.synthesizers.reading.isNull()) {
        state[u"reads"_s] = w.services.log.lines.filter(u"speaking"_s).last();
    }
    if (w.store.isEditing()) {
        state[edits] = w.editor.isNew() ? u"new"_s : w.editor.group().label;
    }
    return state;
}

QVariantMap fieldsOf(const AlarmGroup &group) {
    return QJsonDocument::fromJson(encodeGroups({group})).array().at(0).toObject().toVariantMap();
}

QStringList changes(const QVariantMap &before, const QVariantMap &after) {
    QVariantMap all = before;
    all.insert(after);
    QStringList texts;
    for (auto entry = all.cbegin(); entry != all.cend(); ++entry) {
        const QVariant value = after.value(entry.key());
        if (before.value(entry.key()) != value) {
            const bool isList = value.typeId() == QMetaType::QVariantList;
            texts << entry.key() + u": "_s + (isList ? value.toStringList().join(u' ') : value.toString());
        }
    }
    return texts;
}

Act click(const char *type, int n = 0, QPointF place = {0.5, 0.5}) {
    return [=](WholeWindow &w) { w.click(w.item(type, n), place); };
}

// The states in which controls are tried; some with a playing sound.
void home(WholeWindow &) {}
const Act preview = click("previewButton");
void marked(WholeWindow &w) {
    preview(w);
    w.selectFirst();
}
void menu(WholeWindow &w) {
    preview(w);
    w.openMenu();
}
void changed(WholeWindow &w) {
    w.openEditor([](AlarmGroup &group) { group.label = u"夜"_s; });
    w.editor.preview(u"wakeup_pulse"_s);
    w.editor.trySpeech(u"一"_s);
}
const Act editor = edited();
const Act customSound =
    edited([](AlarmGroup &group) { group.customSoundPath = group.customSoundName = QString(u'a'); });
const Act tooMany = edited([](AlarmGroup &group) { group.alarmCount = 500; });
const Act silent = edited([](AlarmGroup &group) { group.ttsMessage.clear(); });
const Act asked = &WholeWindow::askToDelete;
const Act openList = &WholeWindow::openPicker;
const Act ringing = &WholeWindow::ringFirst;

Act keys(const QList<Qt::Key> &keys) {
    return [=](WholeWindow &w) {
        for (const Qt::Key key : keys) {
            w.key(key);
        }
    };
}
Act clickButtonOf(const char *type, int n, int button = 0) {
    return [=](WholeWindow &w) {
        w.click(Window::all(w.item(type, n), Window::inherits("QQuickButton")).value(button));
    };
}
Act keysAt(const char *type, int n, const QList<Qt::Key> &pressed) {
    return [=](WholeWindow &w) {
        w.item(type, n)->forceActiveFocus();
        keys(pressed)(w);
    };
}

struct Row {
    const char *name;
    Act prepare;
    Act act;
    const char16_t *change;
};

const QList<Row> homeRows{
    {"time", home, click("cardTime"), u"edits: 朝"},
    {"label", preview, click("cardLabel"), u"edits: 朝, sounds: "},
    {"add", home, click("addButton"), u"edits: new"},
    {"preview", home, click("previewButton"), u"sounds: morning_glass at 0.8"},
    {"another preview", preview, click("previewButton"), u"sounds: "},
    {"duplicate", home, click("duplicateButton"), u"groups: 朝 朝 無-, marks: 朝 朝 無"},
    {"switch off", home, click("enabledSwitch"), u"groups: 朝- 無-"},
    {"switch on", home, click("enabledSwitch", 1), u"groups: 朝 無"},
    {"switch by keys", home, keys(QList<Qt::Key>(6, Qt::Key_Tab) << Qt::Key_Space), u"groups: 朝- 無-"},
    {"edit", home, click("editButton"), u"editMode: true"},
    {"mark", marked, click("selectionMark", 1), u"marks: 朝+ 無+"},
    {"unmark", marked, click("selectionMark"), u"marks: 朝 無"},
    {"all", marked, click("selectAllButton"), u"marks: 朝+ 無+"},
    {"none", &WholeWindow::selectAll, click("selectAllButton"), u"marks: 朝 無"},
    {"marked card", marked, click("cardTime"), u"edits: 朝"},
    {"inert switch", marked, click("enabledSwitch"), u""},
    {"inert preview", marked, click("previewButton"), u""},
    {"no menu", marked, &WholeWindow::askMenu, u""},
    {"delete", marked, click("deleteButton"), u"asks: true"},
    {"delete nothing", click("editButton"), click("deleteButton"), u""},
    {"done", marked, click("editButton"), u"editMode: false, marks: 朝 無, sounds: "},
    {"delete, no", asked, click("cancelButton"), u"asks: false"},
    {"delete, escape", asked, keys({Qt::Key_Escape}), u"asks: false"},
    {"delete, yes", asked, click("destructiveButton"),
     u"asks: false, editMode: false, groups: 無-, marks: 無"},
    {"menu", home, &WholeWindow::askMenu, u"menu: 3"},
    {"menu, edit", menu, click("menuItem", 0), u"edits: 朝, menu: 0"},
    {"menu, duplicate", menu, click("menuItem", 1), u"groups: 朝 朝 無-, marks: 朝 朝 無, menu: 0"},
    {"menu, delete", menu, click("menuItem", 2), u"groups: 無-, marks: 無, menu: 0"},
    {"snooze", ringing, click("snoozeButton"), u"alert: false, reads: , rings: false, sounds: "},
    {"stop", ringing, click("stopButton"), u"alert: false, reads: , rings: false, sounds: "},
    {"stop by keys", ringing, keys({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return}),
     u"alert: false, reads: , rings: false, sounds: "},
    {"beside the alert", ringing, click("HomeView", 0, {0.01, 0.1}), u""},
    {"escape at an alert", ringing, keys({Qt::Key_Escape}), u""},
    {"space at an alert", ringing, keys({Qt::Key_Space}), u""},
};

constexpr QPointF up(0.95, 0.25);
constexpr QPointF down(0.95, 0.75);
constexpr QPointF lowest(0.01, 0.5);

const QList<Row> editorRows{
    {"hour", editor, keysAt("PopUpPicker", 0, {Qt::Key_9}), u"targetHour: 9"},
    {"hour of two digits", editor, keysAt("PopUpPicker", 0, {Qt::Key_2, Qt::Key_3}), u"targetHour: 23"},
    {"previous hour", editor, keysAt("PopUpPicker", 0, {Qt::Key_Up}), u"targetHour: 6"},
    {"last minute", editor, keysAt("PopUpPicker", 1, {Qt::Key_5, Qt::Key_9, Qt::Key_Down}),
     u"targetMinute: 59"},
    {"list", editor, keysAt("PopUpPicker", 1, {Qt::Key_Return}), u"list: true"},
    {"entry of a list", openList, click("pickerItem", 3), u"list: false, targetMinute: 3"},
    {"next entry of a list", openList, keys({Qt::Key_Down, Qt::Key_Return}), u"list: false, targetMinute: 1"},
    {"escape from a list", openList, keys({Qt::Key_Down, Qt::Key_Escape}), u"list: false"},
    {"beside a list", openList, click("DayChip", 3), u"list: false"},
    {"direction", editor, click("segment", 1), u"startBefore: false"},
    {"direction by a key", editor, keysAt("segment", 0, {Qt::Key_Right}), u"startBefore: false"},
    {"label", editor, keysAt("TextField", 0, {Qt::Key_End, Qt::Key_A}), u"edits: 朝a, label: 朝a"},
    {"middle of the label", editor, keysAt("TextField", 0, {Qt::Key_Home, Qt::Key_A, Qt::Key_B}),
     u"edits: ab朝, label: ab朝"},
    {"count", editor, click("QQuickSpinBox", 0, up), u"alarmCount: 4"},
    {"lower count", editor, click("QQuickSpinBox", 0, down), u"alarmCount: 2"},
    {"count above its range", tooMany, click("QQuickSpinBox", 0, up), u""},
    {"count into its range", tooMany, click("QQuickSpinBox", 0, down), u"alarmCount: 20"},
    {"interval", editor, click("QQuickSpinBox", 1, up), u"intervalMinutes: 6"},
    {"day", editor, click("DayChip", 6), u"repeatDays: 5 1 6"},
    {"chosen day", editor, click("DayChip", 5), u"repeatDays: 1"},
    {"sound", editor, click("soundRow", 10), u"soundName: sashi_nomi"},
    {"file", editor, clickButtonOf("CustomFileRow", 0),
     u"customSoundName: b.mp3, customSoundPath: Ym9va21hcms6L2IubXAz"},
    {"no file", customSound, clickButtonOf("CustomFileRow", 0, 1), u"customSoundName: , customSoundPath: "},
    {"sound for a file", customSound, click("soundRow", 1),
     u"customSoundName: , customSoundPath: , soundName: sunrise_quilt"},
    {"try a sound", editor, clickButtonOf("soundRow", 6), u"sounds: wakeup_pulse at 0.8"},
    {"next sound, play the previous", editor,
     keysAt("soundRow", 6, {Qt::Key_Down, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Space}),
     u"sounds: wakeup_pulse at 0.8, soundName: cosmic_alarm_run"},
    {"volume", editor, click("Slider", 0, lowest), u"volume: 0"},
    {"speech", editor, click("CheckBox", 0), u"ttsEnabled: false"},
    {"last speech", editor, click("CheckBox", 1), u"ttsLastEnabled: false"},
    {"message", editor, keysAt("TextField", 1, {Qt::Key_End, Qt::Key_A}), u"ttsMessage: 一a"},
    {"last message", editor, keysAt("TextField", 2, {Qt::Key_End, Qt::Key_A}), u"ttsLastMessage: 二a"},
    {"try a message", editor, clickButtonOf("MessageRow", 0),
     u"reads: [TTSPlayer] speaking: \"一\" vol=0.6 loop=false"},
    {"try the last message", editor, clickButtonOf("MessageRow", 1),
     u"reads: [TTSPlayer] speaking: \"二\" vol=0.6 loop=false"},
    {"try no message", silent, clickButtonOf("MessageRow", 0), u""},
    {"speech volume", editor, click("Slider", 1, lowest), u"ttsVolume: 0"},
    {"quietest", editor, keysAt("Slider", 0, {Qt::Key_Home}), u"volume: 0"},
    {"loudest", editor, keysAt("Slider", 0, {Qt::Key_End}), u"volume: 1"},
    {"louder", editor, keysAt("Slider", 0, {Qt::Key_PageUp}), u"volume: 1"},
    {"quieter", editor, keysAt("Slider", 0, {Qt::Key_PageDown}), u"volume: 0.55"},
    {"fewest", editor, keysAt("QQuickSpinBox", 0, {Qt::Key_Home}), u"alarmCount: 1"},
    {"most", editor, keysAt("QQuickSpinBox", 0, {Qt::Key_End}), u"alarmCount: 20"},
    {"more", editor, keysAt("QQuickSpinBox", 0, {Qt::Key_PageUp}), u"alarmCount: 8"},
    {"fewer", editor, keysAt("QQuickSpinBox", 0, {Qt::Key_PageDown}), u"alarmCount: 1"},
    {"save", changed, click("saveButton"), u"edits: , groups: 夜 無-, marks: 夜 無, reads: , sounds: "},
    {"cancel", changed, click("cancelEditButton"), u"edits: , reads: , sounds: "},
    {"beside the editor", changed, [](WholeWindow &w) { w.click(QPointF(5, 750)); },
     u"edits: , reads: , sounds: "},
    {"escape", editor, keys({Qt::Key_Escape}), u"edits: "},
    {"escape with changes", changed, keys({Qt::Key_Escape}), u""},
    {"edge of the editor", changed, click("AlarmEditView", 0, {0.01, 0.1}), u""},
};

} // namespace

class ControlsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyControlHasItsEffectOnly_data() {
        QTest::addColumn<Act>("prepare");
        QTest::addColumn<Act>("act");
        QTest::addColumn<QString>("change");
        for (const Row &row : homeRows + editorRows) {
            QTest::newRow(row.name) << row.prepare << row.act << QString::fromUtf16(row.change);
        }
    }
    void everyControlHasItsEffectOnly() {
        QFETCH(Act, prepare);
        QFETCH(Act, act);
        QFETCH(QString, change);
        WholeWindow w;
        w.fileChooser.answer = u"/b.mp3"_s;
        prepare(w);
        const QVariantMap before = stateOf(w);
        const QVariantMap fields = fieldsOf(w.editor.group());
        act(w);
        const auto difference = [&] {
            const QVariantMap after = stateOf(w);
            QStringList all = changes(before, after);
            if (before.contains(edits) && after.contains(edits)) {
                all += changes(fields, fieldsOf(w.editor.group()));
            }
            return all.join(u", "_s);
        };
        QTRY_COMPARE(difference(), change);
    }
};

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
