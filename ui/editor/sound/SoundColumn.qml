import QtQuick 2.15
import Kova

// What the rows of the built-in sounds have in common.
Column {
    // The row at which the Tab key stops.
    property int currentRow: 0
    required property AlarmEditor editor

    // The keyboard goes to another row, to its button of the same kind.
    signal move(int row, bool toPlayButton)
}
