import QtQuick 2.15
import Kova

// One alarm of a timeline, after the line that connects it to the previous one.
Row {
    id: item

    readonly property color color: isLast ? Palette.danger : Palette.accent
    required property int index
    required property bool isLast
    required property string modelData

    Accessible.description: isLast ? "最終アラーム" : ""
    Accessible.name: modelData
    Accessible.role: Accessible.ListItem
    spacing: 8
    y: 4

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        color: Palette.line
        height: 1
        visible: item.index > 0
        width: 20
    }
    Column {
        spacing: 2

        ContinuousRectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            color: item.color
            height: 8
            radius: 4
            width: 8
        }
        Text {
            color: item.color
            font.family: Fonts.monospaced
            font.pixelSize: 10
            text: item.modelData
        }
    }
}
