import QtQuick 2.15
import Kova

// The built-in sounds. The Tab key stops at the current row and its try-out button; the up and down keys lead on
// from there.
Column {
    id: list

    property int currentRow: 0
    required property AlarmEditor editor

    function row(index) {
        return index >= 0 && index < repeater.count ? repeater.itemAt(index) as SoundRow : null;
    }

    spacing: 2

    Repeater {
        id: repeater

        model: list.editor.sounds

        delegate: SoundRow {
        }
    }
}
