import QtQuick 2.15
import Kova

// Asks for confirmation before the selected groups are deleted. Escape cancels.
Panel {
    id: confirmation

    required property HomeEditMode selection
    readonly property string message: selection.count + "件のアラームを削除しますか？"
    readonly property string title: "削除確認"

    padding: 16
    topPadding: 20

    contentItem: FocusScope {
        Accessible.description: confirmation.message
        Accessible.name: confirmation.title
        Accessible.role: Accessible.Dialog
        focus: true
        implicitHeight: childrenRect.height
        implicitWidth: 228

        Keys.onEscapePressed: confirmation.selection.cancelDeletion()

        Column {
            spacing: 6
            width: parent.width

            Text {
                color: Palette.textPrimary
                font.bold: true
                font.pixelSize: 13
                horizontalAlignment: Text.AlignHCenter
                objectName: "alertTitle"
                text: confirmation.title
                width: parent.width
            }
            Text {
                bottomPadding: 12
                color: Palette.textPrimary
                font.pixelSize: 11
                horizontalAlignment: Text.AlignHCenter
                text: confirmation.message
                width: parent.width
                wrapMode: Text.Wrap
            }
            Row {
                spacing: 8
                width: parent.width

                PlainButton {
                    color: Palette.textPrimary
                    fill: Palette.edge
                    focus: true
                    height: 28
                    objectName: "cancelButton"
                    text: "キャンセル"
                    width: (parent.width - 8) / 2

                    onClicked: confirmation.selection.cancelDeletion()
                }
                PlainButton {
                    color: Palette.textOnDanger
                    fill: Palette.danger
                    height: 28
                    objectName: "destructiveButton"
                    text: "削除"
                    width: (parent.width - 8) / 2

                    onClicked: confirmation.selection.confirmDeletion()
                }
            }
        }
    }
}
