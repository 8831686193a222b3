import QtQuick 2.15
import Kova

Row {
    id: section

    required property AlarmEditor editor

    spacing: 6

    DayChip {
        day: 0
        editor: section.editor
    }
    DayChip {
        day: 1
        editor: section.editor
    }
    DayChip {
        day: 2
        editor: section.editor
    }
    DayChip {
        day: 3
        editor: section.editor
    }
    DayChip {
        day: 4
        editor: section.editor
    }
    DayChip {
        day: 5
        editor: section.editor
    }
    DayChip {
        day: 6
        editor: section.editor
    }
}
