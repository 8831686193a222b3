import QtQuick 2.15
import Kova

Column {
    id: section

    default property alias content: column.data

    // Whether the card fills the width instead of fitting its content.
    property bool isStretched: true
    required property string title

    Accessible.name: title
    Accessible.role: Accessible.Grouping
    spacing: 10
    width: isStretched ? parent.width : implicitWidth

    Text {
        Accessible.name: text
        Accessible.role: Accessible.Heading
        color: Palette.textSecondary
        font.capitalization: Font.AllUppercase
        font.letterSpacing: 0.5
        font.pixelSize: 11
        font.weight: Font.Medium
        text: section.title
    }
    Rectangle {
        id: card

        color: Palette.surface
        implicitHeight: column.implicitHeight + 24
        implicitWidth: column.implicitWidth + 24
        radius: 12
        width: section.isStretched ? section.width : implicitWidth

        Column {
            id: column

            spacing: 10
            width: section.isStretched ? card.width - 24 : implicitWidth
            x: 12
            y: 12
        }
    }
}
