import QtQuick 2.15
import Kova

// A titled card, as wide as its content or as its user makes it.
Column {
    id: section

    default property alias content: column.data
    required property string title

    spacing: 10

    Text {
        color: Palette.textSecondary
        font.capitalization: Font.AllUppercase
        font.letterSpacing: 0.5
        font.pixelSize: 11
        font.weight: Font.Medium
        text: section.title
    }
    Rectangle {
        color: Palette.surface
        implicitHeight: column.implicitHeight + 24
        implicitWidth: column.implicitWidth + 24
        radius: 12
        width: section.width

        Column {
            id: column

            spacing: 10
            width: parent.width - 24
            x: 12
            y: 12
        }
    }
}
