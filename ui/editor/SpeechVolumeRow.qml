import QtQuick 2.15
import Kova

Item {
    id: row

    required property AlarmEditor editor

    implicitHeight: slider.implicitHeight

    Text {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textSecondary
        font.pixelSize: 12
        text: "TTS音量"
    }
    Slider {
        id: slider

        Accessible.name: label.text
        anchors.left: label.right
        anchors.leftMargin: 8
        anchors.right: percent.left
        anchors.rightMargin: 8
        stepSize: 0.05
        value: row.editor.ttsVolume

        onMoved: row.editor.ttsVolume = value
    }
    PercentText {
        id: percent

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: row.editor.ttsVolumeText
    }
}
