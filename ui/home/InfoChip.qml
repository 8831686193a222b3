import QtQuick 2.15
import Kova

ContinuousRectangle {
    id: infoChip

    required property string text

    color: Qt.alpha(Palette.background, 0.7)
    implicitHeight: label.implicitHeight + 4
    implicitWidth: Math.ceil(label.implicitWidth) + 12
    radius: 5

    Text {
        id: label

        anchors.centerIn: parent
        color: Palette.textSecondary
        font.pixelSize: 10
        text: infoChip.text
    }
}
