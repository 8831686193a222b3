import QtQuick 2.15
import Kova

Column {
    id: section

    required property AlarmEditor editor

    spacing: 10

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
    MessageRow {
        message: section.editor.group.ttsMessage
        placeholder: "読み上げメッセージ"
        visible: section.editor.group.ttsEnabled
        width: parent.width

        onEdit: text => section.editor.group.ttsMessage = text
        onTryOut: section.editor.trySpeech(message)
    }
    Divider {
        width: parent.width
    }
    CheckBox {
        checked: section.editor.group.ttsLastEnabled
        text: "最終アラームで読み上げ"

        onToggled: section.editor.group.ttsLastEnabled = checked
    }
    MessageRow {
        message: section.editor.group.ttsLastMessage
        placeholder: "最終アラーム メッセージ"
        visible: section.editor.group.ttsLastEnabled
        width: parent.width

        onEdit: text => section.editor.group.ttsLastMessage = text
        onTryOut: section.editor.trySpeech(message)
    }
    SpeechVolumeRow {
        editor: section.editor
        visible: section.editor.group.ttsEnabled || section.editor.group.ttsLastEnabled
        width: parent.width
    }
}
