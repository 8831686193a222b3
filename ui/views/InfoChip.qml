import QtQuick 2.15
import Kova

// A small tag of text.
Item {
    id: infoChip

    required property string text

    implicitHeight: label.implicitHeight + 4
    implicitWidth: Math.ceil(label.implicitWidth) + 12

    ContinuousRectangle {
        anchors.fill: parent
        color: Qt.alpha(Palette.background, 0.7)
        radius: 5
    }
    Text {
        id: label

        anchors.centerIn: parent
        color: Palette.textSecondary
        font.pixelSize: 10
        text: infoChip.text
        textFormat: Text.PlainText
    }
}
