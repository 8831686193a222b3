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
        checked: section.editor.ttsEnabled
        text: "通常アラームで読み上げ"

        onToggled: section.editor.ttsEnabled = checked
    }
    MessageRow {
        message: section.editor.ttsMessage
        placeholder: "読み上げメッセージ"
        visible: section.editor.ttsEnabled
        width: parent.width

        onEdit: text => section.editor.ttsMessage = text
        onTryOut: section.editor.trySpeech()
    }
    Divider {
        width: parent.width
    }
    CheckBox {
        checked: section.editor.ttsLastEnabled
        text: "最終アラームで読み上げ"

        onToggled: section.editor.ttsLastEnabled = checked
    }
    MessageRow {
        message: section.editor.ttsLastMessage
        placeholder: "最終アラーム メッセージ"
        visible: section.editor.ttsLastEnabled
        width: parent.width

        onEdit: text => section.editor.ttsLastMessage = text
        onTryOut: section.editor.tryLastSpeech()
    }
    SpeechVolumeRow {
        editor: section.editor
        visible: section.editor.ttsEnabled || section.editor.ttsLastEnabled
        width: parent.width
    }
}
