import QtQuick 2.15
import Kova

// One group's row: its card, and in edit mode the mark that selects it.
FocusScope {
    id: row

    required property string groupId
    required property int index
    required property HomeScreen home
    required property bool isEnabled
    required property bool isSelected
    required property string label
    required property string repeatDaysText
    required property string sequenceText
    required property string timeText

    readonly property bool editMode: home.selection.editMode
    readonly property bool isCurrent: ListView.isCurrentItem

    // A place in the row where the card's menu is asked for.
    signal menuAsked(real x, real y)

    // The keyboard goes to another row: to the same place in it, or on from its end.
    signal move(int step, int stop)

    function stops(): var {
        return editMode && mark.item ? [mark.item, ...card.stops] : card.stops;
    }
    function stop(): int {
        return Math.max(0, stops().findIndex(stop => stop.activeFocus));
    }
    // The Tab key leads on to the next row, which is perhaps not there yet for the window's own order.
    function leave(event: var, step: int) {
        const isAtEnd = stop() === (step > 0 ? stops().length - 1 : 0);
        const next = index + step;
        event.accepted = isAtEnd && next >= 0 && next < ListView.view.count;
        if (event.accepted)
            move(step, step > 0 ? 0 : -1);
    }
    function focusStop(stop: int) {
        const all = stops();
        all[(stop + all.length) % all.length].forceActiveFocus();
    }

    Accessible.name: card.title
    Accessible.role: Accessible.ListItem
    implicitHeight: card.implicitHeight

    // A row that is taken out takes the keyboard along.
    onVisibleChanged: if (!visible)
        focus = false

    Keys.onDownPressed: row.move(1, row.stop())
    Keys.onMenuPressed: row.askMenu(card.x + 14, row.height - 12)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier) {
            row.askMenu(card.x + 14, row.height - 12);
            event.accepted = true;
        }
    }
    Keys.onUpPressed: row.move(-1, row.stop())

    function askMenu(x: real, y: real) {
        if (!editMode)
            menuAsked(x, y);
    }

    Loader {
        id: mark

        active: row.editMode
        anchors.verticalCenter: parent.verticalCenter
        visible: active
        width: 22
        x: 12

        sourceComponent: SelectionMark {
            Accessible.name: "選択 " + card.title // qmllint disable unqualified
            activeFocusOnTab: activeFocus || row.isCurrent // qmllint disable unqualified
            isSelected: row.isSelected // qmllint disable unqualified

            Keys.onBacktabPressed: event => row.leave(event, -1) // qmllint disable unqualified
            onClicked: row.home.selection.toggle(row.groupId) // qmllint disable unqualified
        }
    }
    AlarmCardView {
        id: card

        isCurrent: row.isCurrent
        isEnabled: row.isEnabled
        isInert: row.editMode
        isPreviewing: !row.editMode && row.home.currentPreviewId === row.groupId
        label: row.label
        repeatDaysText: row.repeatDaysText
        sequenceText: row.sequenceText
        timeText: row.timeText
        width: row.width - x - 12
        x: row.editMode ? mark.x + mark.width + 10 : 12

        onClick: row.home.click(row.groupId)
        onLeave: (event, step) => row.leave(event, step)
        onDuplicate: row.home.duplicate(row.groupId)
        onPreview: row.home.preview(row.groupId)
        onToggle: row.home.toggle(row.groupId)
    }
    TapHandler {
        acceptedButtons: Qt.RightButton

        onTapped: eventPoint => row.askMenu(eventPoint.position.x, eventPoint.position.y)
    }
}
