import QtQuick 2.15
import Kova

// The built-in sounds. The Tab key stops at the current row and its try-out button; the up and down keys lead on
// from there.
SoundColumn {
    id: list

    spacing: 2

    onMove: (row, toPlayButton) => {
        const target = row >= 0 && row < repeater.count ? repeater.itemAt(row) as SoundRow : null;
        if (target)
            target.takeFocus(toPlayButton);
    }

    Repeater {
        id: repeater

        model: list.editor.soundIds

        delegate: SoundRow {
        }
    }
}
