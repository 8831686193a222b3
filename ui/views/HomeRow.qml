import QtQuick 2.15
import Kova

// One group's row: its card, and in edit mode the mark that selects it.
Item {
    id: row

    required property string groupId
    required property HomeScreen home
    required property bool isEnabled
    required property bool isSelected
    required property string label
    required property string repeatDaysText
    required property string sequenceText
    required property string timeText

    readonly property bool editMode: home.selection.editMode

    // A place in the row where the card's menu is asked for.
    signal menuAsked(real x, real y)

    Accessible.name: card.title
    Accessible.role: Accessible.ListItem
    implicitHeight: card.implicitHeight

    Keys.onMenuPressed: row.askMenu(card.x + 14, row.height - 12)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier) {
            row.askMenu(card.x + 14, row.height - 12);
            event.accepted = true;
        }
    }

    function askMenu(x: real, y: real) {
        if (!editMode) {
            menuAsked(x, y);
        }
    }

    Loader {
        id: mark

        active: row.editMode
        anchors.verticalCenter: parent.verticalCenter
        visible: active
        width: 22

        sourceComponent: SelectionMark {
            Accessible.name: "選択 " + card.title // qmllint disable unqualified
            isSelected: row.isSelected // qmllint disable unqualified

            onClicked: row.home.selection.toggle(row.groupId) // qmllint disable unqualified
        }
    }
    AlarmCardView {
        id: card

        isEnabled: row.isEnabled
        isPreviewing: !row.editMode && row.home.currentPreviewId === row.groupId
        label: row.label
        repeatDaysText: row.repeatDaysText
        sequenceText: row.sequenceText
        timeText: row.timeText
        width: row.width - x
        x: row.editMode ? mark.width + 10 : 0

        onClick: row.home.click(row.groupId)
        onDuplicate: row.home.duplicate(row.groupId)
        onPreview: row.home.preview(row.groupId)
        onToggle: row.home.toggle(row.groupId)
    }
    TapHandler {
        acceptedButtons: Qt.RightButton

        onTapped: eventPoint => row.askMenu(eventPoint.position.x, eventPoint.position.y)
    }
}
