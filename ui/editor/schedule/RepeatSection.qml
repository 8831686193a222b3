import QtQuick 2.15
import Kova

Row {
    id: section

    required property AlarmEditor editor

    spacing: 6

    Repeater {
        model: section.editor.dayLabels

        delegate: DayChip {
            editor: section.editor // qmllint disable unqualified
        }
    }
}
