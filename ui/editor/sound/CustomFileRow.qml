import QtQuick 2.15
import Kova

// Opens the file dialog and shows the chosen sound file.
Row {
    id: row

    required property AlarmEditor editor

    spacing: 8

    PlainButton {
        id: fileButton

        cornerRadius: 8
        horizontalPadding: 10
        text: "ファイルから選択"
        verticalPadding: 6

        background: ContinuousRectangle {
            borderColor: Qt.alpha(Palette.accent, 0.4)
            borderWidth: 1
            color: fileButton.hovered ? Qt.alpha(Palette.accent, 0.06) : "transparent"
            dashLength: 4
            radius: 8
        }
        contentItem: Row {
            spacing: 6

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                color: Palette.accent
                name: "folder"
                size: 12
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                color: Palette.accent
                font.pixelSize: 12
                text: fileButton.text
            }
        }

        onClicked: row.editor.chooseSoundFile()
    }
    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4
        visible: row.editor.group.hasCustomSound

        Symbol {
            id: note

            anchors.verticalCenter: parent.verticalCenter
            color: Palette.accent
            name: "music.note"
            size: 10
        }
        Text {
            Accessible.name: text
            anchors.verticalCenter: parent.verticalCenter
            color: Palette.textPrimary
            elide: Text.ElideRight
            font.pixelSize: 11
            maximumLineCount: 1
            text: row.editor.group.customSoundName
            textFormat: Text.PlainText
            width: Math.min(Math.ceil(implicitWidth), row.width - fileButton.width - note.width - clearButton.width - 16)
        }
        SymbolButton {
            id: clearButton

            Accessible.name: "サウンドファイルを解除"
            anchors.verticalCenter: parent.verticalCenter
            color: hovered ? Palette.textPrimary : Palette.textSecondary
            cornerRadius: width / 2
            symbol: "xmark.circle.fill"
            symbolSize: 12

            onClicked: row.editor.clearCustomSound()
        }
    }
}
