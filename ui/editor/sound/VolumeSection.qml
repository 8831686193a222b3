import QtQuick 2.15
import Kova

SectionCard {
    id: section

    required property AlarmEditor editor

    title: "音量"

    Row {
        spacing: 8
        width: parent.width

        Symbol {
            id: quiet

            anchors.verticalCenter: parent.verticalCenter
            color: Palette.textSecondary
            name: "speaker.fill"
            size: 11
        }
        Slider {
            Accessible.name: section.title
            stepSize: section.editor.volumeStep
            value: section.editor.group.volume
            width: parent.width - quiet.width - loud.width - percent.width - 24

            onMoved: section.editor.group.volume = value
        }
        Symbol {
            id: loud

            anchors.verticalCenter: parent.verticalCenter
            color: Palette.textSecondary
            name: "speaker.wave.3.fill"
            size: 11
        }
        PercentText {
            id: percent

            text: section.editor.group.volumeText
        }
    }
}
