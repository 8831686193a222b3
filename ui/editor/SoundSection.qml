import QtQuick 2.15
import Kova

Column {
    id: section

    required property AlarmEditor editor

    spacing: 10

    CustomFileRow {
        editor: section.editor
        width: parent.width
    }
    SoundList {
        editor: section.editor
        width: parent.width
    }
}
