import QtQuick 2.15
import Kova

Row {
    id: row

    required property AlarmEditor editor

    spacing: 8

    Text {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textSecondary
        font.pixelSize: 12
        text: "TTS音量"
    }
    Slider {
        Accessible.name: label.text
        stepSize: row.editor.volumeStep
        value: row.editor.group.ttsVolume
        width: row.width - label.width - percent.width - 16

        onMoved: row.editor.group.ttsVolume = value
    }
    PercentText {
        id: percent

        text: row.editor.group.ttsVolumeText
    }
}
