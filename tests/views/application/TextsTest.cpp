#include "WindowFixture.h"
#include "drawing/Palette.h"
#include "drawing/Symbol.h"

#include <QAccessible>

using namespace kova;
using namespace Qt::StringLiterals;

namespace {

// Returns an item's own content: its text, its [symbol], ✓ if it is checked, its (tooltip), and as a prefix *
// for the black of a chosen item or ! for the red of the last or deleted one.
QStringList content(const QQuickItem &item) {
    QStringList tokens;
    const QRgb color = item.property("color").value<QColor>().rgba();
    const QString mark = color == QColor(Qt::black).rgba()   ? u"*"_s
                         : color == Palette::danger().rgba() ? u"!"_s
                                                             : QString();
    if (item.property("checked").toBool()) {
        tokens << u"✓"_s;
    }
    if (qobject_cast<const Symbol *>(&item)) {
        tokens << mark + u'[' + item.property("name").toString() + u']';
    } else if (item.inherits("QQuickText") || item.inherits("QQuickTextInput")) {
        tokens << mark + item.property("text").toString();
    } else if (item.inherits("QQuickSlider")) {
        tokens << QString::number(item.property("value").toDouble());
    }
    if (const QString tip = item.property("toolTip").toString(); !tip.isEmpty()) {
        tokens << u'(' + tip + u')';
    }
    return tokens;
}

QString shown(QQuickItem *root) {
    QStringList tokens;
    for (QQuickItem *item : Window::all(root, [](const QQuickItem &) { return true; })) {
        tokens << content(*item);
    }
    tokens.removeAll(QString());
    return tokens.join(u' ');
}

// The list of built-in sounds; -1 if none is chosen.
QString sounds(int chosen) {
    QStringList rows;
    const QString labels = QStringLiteral(
        "Morning Glass|Sunrise Quilt|Porchlight Morning|Dawn Bird Drift|Zen Garden Awake|Hazy Morning Pulse|"
        "Wake-up Pulse|Cosmic Alarm Run|Event Horizon|Mouse Chase Jive|差し飲み");
    for (const QString &label : labels.split(u'|')) {
        const bool isChosen = rows.size() == chosen;
        rows << (isChosen ? u"✓ [play.circle] [largecircle.fill.circle] "_s : u"[play.circle] [circle] "_s) +
                    label;
    }
    return rows.join(u' ');
}

void emptyInEditMode(WholeWindow &w) {
    w.click("editButton");
    w.store.deleteSelectedGroups({w.store.groups().at(0).id, w.store.groups().at(1).id});
}
void setFile(AlarmGroup &group) {
    group.customSoundPath = group.customSoundName = QString(u'a');
}

struct Row {
    const char *name;
    QByteArray part; ///< a QML type, or the name of an item in it
    Act prepare;
    const char16_t *texts; ///< %1: the card of the first group, %2: its buttons, %3: the second card
    int sound = 0;         ///< the chosen one in the list of sounds, %4
};

const QList<Row> homeRows{
    {"home", "HomeView", [](WholeWindow &) {}, u"KOVA [bolt.fill] 編集 (アラーム追加) *[plus] %1 %2 %3"},
    {"nothing", "HomeView", emptyInEditMode,
     u"KOVA 完了 アラームがありません ＋ボタンで追加 全選択 0件を削除"},
    {"preview", "AlarmCardView", [](WholeWindow &w) { w.click("previewButton"); },
     u"%1 (停止) [stop.fill] (複製) [doc.on.doc] ✓"},
    {"marked", "HomeView", &WholeWindow::selectFirst,
     u"KOVA [bolt.fill] 完了 ✓ *[checkmark] %1 %2 %3 全選択 1件を削除"},
    {"all marked", "EditBar", &WholeWindow::selectAll, u"全解除 2件を削除"},
    {"confirmation", "alertTitle", &WholeWindow::askToDelete,
     u"削除確認 1件のアラームを削除しますか？ キャンセル 削除"},
    {"menu", "menuItem", &WholeWindow::openMenu, u"編集 複製 削除"},
    {"alert", "alertTexts", &WholeWindow::ringFirst, u"[bell.fill] 6:50 朝 アラーム 1 / 3 スヌーズ *停止"},
};

const QList<Row> editorRows{
    {"editor", "AlarmEditView", edited(),
     u"キャンセル アラーム編集 保存 目標時刻 [chevron.up.chevron.down] 7 : [chevron.up.chevron.down] 00 "
     u"目標時刻で ✓ 終了 開始 ラベル 朝 繰り返し 日 ✓ *月 火 水 木 ✓ *金 土 アラーム回数 "
     u"回数 3回 [chevron.up] [chevron.down] 間隔 5分 [chevron.up] [chevron.down] "
     u"タイムライン 6:50 6:55 !7:00 サウンド [folder] ファイルから選択 %4 "
     u"音量 [speaker.fill] 0.8 [speaker.wave.3.fill] 80% テキスト読み上げ (TTS) 音楽と同時に再生されます "
     u"✓ *[checkmark] 通常アラームで読み上げ 一 (TTS試聴) [play.circle] "
     u"✓ *[checkmark] 最終アラームで読み上げ 二 (TTS試聴) [play.circle] TTS音量 0.6 60%"},
    {"new", "saveButton", edited([](AlarmGroup &group) { group.id = QUuid::createUuid(); }),
     u"キャンセル 新規アラーム 保存"},
    {"from", "TargetTimeSection", edited([](AlarmGroup &group) {
         group.targetHour = 23;
         group.targetMinute = 5;
         group.startBefore = false;
     }),
     u"目標時刻 [chevron.up.chevron.down] 23 : [chevron.up.chevron.down] 05 目標時刻で 終了 ✓ 開始"},
    {"single", "CountSection", edited([](AlarmGroup &group) { group.alarmCount = 1; }),
     u"アラーム回数 回数 1回 [chevron.up] [chevron.down]"},
    {"another sound", "SoundList", edited([](AlarmGroup &group) { group.soundName = u"wakeup_pulse"_s; }),
     u"%4", 6},
    {"file", "CustomFileRow", edited(&setFile),
     u"[folder] ファイルから選択 [music.note] a [xmark.circle.fill]"},
    {"no built-in sound", "SoundList", edited(&setFile), u"%4", -1},
    {"no speech", "SpeechSection",
     edited([](AlarmGroup &group) { group.ttsEnabled = group.ttsLastEnabled = false; }),
     u"テキスト読み上げ (TTS) 音楽と同時に再生されます 通常アラームで読み上げ 最終アラームで読み上げ"},
    {"ordinary speech", "SpeechSection", edited([](AlarmGroup &group) {
         group.ttsLastEnabled = false;
         group.ttsMessage.clear();
     }),
     u"テキスト読み上げ (TTS) 音楽と同時に再生されます ✓ *[checkmark] 通常アラームで読み上げ "
     u"読み上げメッセージ (TTS試聴) [play.circle] 最終アラームで読み上げ TTS音量 0.6 60%"},
    {"last speech", "SpeechSection", edited([](AlarmGroup &group) {
         group.ttsEnabled = false;
         group.ttsLastMessage.clear();
     }),
     u"テキスト読み上げ (TTS) 音楽と同時に再生されます 通常アラームで読み上げ ✓ *[checkmark] "
     u"最終アラームで読み上げ 最終アラーム メッセージ (TTS試聴) [play.circle] TTS音量 0.6 60%"},
};

} // namespace

class TextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyTextAndSymbolShowsItsState_data() {
        QTest::addColumn<QByteArray>("part");
        QTest::addColumn<Act>("prepare");
        QTest::addColumn<QString>("texts");
        for (const Row &row : homeRows + editorRows) {
            QString texts = QString::fromUtf16(row.texts);
            texts.replace(u"%1"_s, u"朝 7:00 月・金 3回 / 5分間隔"_s)
                .replace(u"%2"_s, u"(プレビュー) [play.fill] (複製) [doc.on.doc] ✓"_s)
                .replace(u"%3"_s, u"18:00 一度だけ (プレビュー) [play.fill] (複製) [doc.on.doc]"_s)
                .replace(u"%4"_s, sounds(row.sound));
            QTest::newRow(row.name) << row.part << row.prepare << texts;
        }
    }
    void everyTextAndSymbolShowsItsState() {
        QFETCH(QByteArray, part);
        QFETCH(Act, prepare);
        QFETCH(QString, texts);
        WholeWindow w;
        prepare(w);
        QQuickItem *root = w.item(part);
        QVERIFY(root);
        if (root->objectName() == QString::fromLatin1(part)) {
            root = root->parentItem();
        }
        QTRY_COMPARE(shown(root), texts);
    }

    void everyControlIsExposedWithAUniqueName_data() {
        QTest::addColumn<Act>("prepare");
        QTest::newRow("home") << Act([](WholeWindow &) {});
        QTest::newRow("confirmation") << Act(&WholeWindow::askToDelete);
        QTest::newRow("menu") << Act(&WholeWindow::openMenu);
        QTest::newRow("editor") << edited(&setFile);
        QTest::newRow("picker") << Act(&WholeWindow::openPicker);
        QTest::newRow("menu of a text") << Act([](WholeWindow &w) {
            w.openEditor();
            w.click(w.frame("TextField").center(), Qt::RightButton);
            QTRY_VERIFY(w.shows("menuItem"));
        });
        QTest::newRow("alert") << Act(&WholeWindow::ringFirst);
    }
    void everyControlIsExposedWithAUniqueName() {
        QFETCH(Act, prepare);
        WholeWindow w;
        prepare(w);
        QAccessible::setActive(true); // Qt sets the roles of controls
        QStringList names;
        for (QQuickItem *item : w.all([](const QQuickItem &control) {
                 return control.activeFocusOnTab() || control.inherits("QQuickAbstractButton");
             })) {
            QAccessibleInterface *const control = QAccessible::queryAccessibleInterface(item);
            QVERIFY2(control, item->metaObject()->className());
            const bool isExposed = control->parent()->indexOfChild(control) >= 0;
            if (!item->activeFocusOnTab() && !isExposed) {
                continue; // inert
            }
            const QString name = control->text(QAccessible::Name);
            QVERIFY2(isExposed && !name.isEmpty(), item->metaObject()->className());
            QVERIFY2(control->text(QAccessible::Description) != name, qPrintable(name));
            names << QString::number(control->role()) + name;
        }
        QVERIFY(!names.isEmpty());
        QCOMPARE(names.removeDuplicates(), 0);
    }

    void entriesOfAnOpenListAreExposedInVisualOrder() {
        WholeWindow w;
        w.openEditor([](AlarmGroup &group) { group.targetMinute = 30; });
        w.click(w.item("PopUpPicker", 1));
        QTRY_VERIFY(w.item("pickerItem"));
        QAccessibleInterface *const list =
            QAccessible::queryAccessibleInterface(w.item("pickerItem"))->parent();
        QCoreApplication::processEvents();
        QAccessible::setActive(true); // an assistive tool connects
        QTRY_COMPARE(list->childCount(), 60);
        QStringList minutes;
        for (int i = 0; i < list->childCount(); ++i) {
            minutes << list->child(i)->text(QAccessible::Name);
        }
        QVERIFY(std::is_sorted(minutes.cbegin(), minutes.cend()));
    }
};

QTEST_MAIN(TextsTest)
#include "TextsTest.moc"
