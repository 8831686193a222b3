import QtQuick 2.15
import Kova

// The built-in sounds. Tab stops at the current row and its preview button; the up and down keys move to other rows.
Column {
    id: list

    readonly property int chosenRow: editor.soundIds.indexOf(editor.group.chosenSound) // qmllint disable
    property int currentRow: 0
    required property AlarmEditor editor

    function focusRow(row: int, onPlayButton: bool) {
        if (row >= 0 && row < repeater.count)
            (repeater.itemAt(row) as SoundRow).takeFocus(onPlayButton);
    }

    spacing: 2

    onChosenRowChanged: if (chosenRow >= 0)
        currentRow = chosenRow

    Repeater {
        id: repeater

        model: list.editor.soundIds

        delegate: SoundRow {
            editor: list.editor // qmllint disable unqualified
            isChosen: list.chosenRow === index // qmllint disable unqualified
            isCurrent: list.currentRow === index // qmllint disable unqualified
            width: list.width // qmllint disable unqualified

            onMadeCurrent: list.currentRow = index // qmllint disable unqualified
            onMove: (step, onPlayButton) => list.focusRow(index + step, onPlayButton) // qmllint disable unqualified
        }
    }
}
