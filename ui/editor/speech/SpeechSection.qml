import QtQuick 2.15
import Kova

// What the alarm speaks. A row is created when it is first shown.
SectionCard {
    id: section

    required property AlarmEditor editor

    title: "テキスト読み上げ (TTS)"

    Text {
        Accessible.name: text
        color: Palette.textSecondary
        font.pixelSize: 10
        text: "音楽と同時に再生されます"
    }
    CheckBox {
        checked: section.editor.group.ttsEnabled
        text: "通常アラームで読み上げ"

        onToggled: section.editor.group.ttsEnabled = checked
    }
    Loader {
        active: section.editor.group.ttsEnabled
        visible: active
        width: parent.width

        sourceComponent: MessageRow {
            message: section.editor.group.ttsMessage // qmllint disable unqualified
            placeholder: "読み上げメッセージ"

            onEdit: text => section.editor.group.ttsMessage = text // qmllint disable unqualified
            onTryOut: section.editor.trySpeech(message) // qmllint disable unqualified
        }
    }
    Rectangle {
        color: Palette.line
        height: 1
        width: parent.width
    }
    CheckBox {
        checked: section.editor.group.ttsLastEnabled
        text: "最終アラームで読み上げ"

        onToggled: section.editor.group.ttsLastEnabled = checked
    }
    Loader {
        active: section.editor.group.ttsLastEnabled
        visible: active
        width: parent.width

        sourceComponent: MessageRow {
            message: section.editor.group.ttsLastMessage // qmllint disable unqualified
            placeholder: "最終アラーム メッセージ"

            onEdit: text => section.editor.group.ttsLastMessage = text // qmllint disable unqualified
            onTryOut: section.editor.trySpeech(message) // qmllint disable unqualified
        }
    }
    Loader {
        active: section.editor.group.ttsEnabled || section.editor.group.ttsLastEnabled
        visible: active
        width: parent.width

        // qmllint disable unqualified
        sourceComponent: Row {
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
                stepSize: section.editor.volumeStep
                value: section.editor.group.ttsVolume
                width: parent.width - label.width - percent.width - 16

                onMoved: section.editor.group.ttsVolume = value
            }
            PercentText {
                id: percent

                text: section.editor.group.ttsVolumeText
            }
        }
        // qmllint enable unqualified
    }
}
