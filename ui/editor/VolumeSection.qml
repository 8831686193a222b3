import QtQuick 2.15
import Kova

Item {
    id: section

    required property AlarmEditor editor

    implicitHeight: slider.implicitHeight

    Symbol {
        id: quiet

        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textSecondary
        name: "speaker.fill"
        size: 11
    }
    Slider {
        id: slider

        Accessible.name: "音量"
        anchors.left: quiet.right
        anchors.leftMargin: 8
        anchors.right: loud.left
        anchors.rightMargin: 8
        stepSize: 0.05
        value: section.editor.volume

        onMoved: section.editor.volume = value
    }
    Symbol {
        id: loud

        anchors.right: percent.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textSecondary
        name: "speaker.wave.3.fill"
        size: 11
    }
    PercentText {
        id: percent

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: section.editor.volumeText
    }
}
