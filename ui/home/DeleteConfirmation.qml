import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// Asks for confirmation before the selected groups are deleted. Escape cancels.
T.Popup {
    id: confirmation

    required property HomeEditMode selection
    readonly property string title: "削除確認"

    closePolicy: T.Popup.NoAutoClose
    focus: true
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    implicitWidth: 260
    modal: true
    padding: 16
    parent: T.Overlay.overlay
    topPadding: 20
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0

    T.Overlay.modal: Rectangle {
        color: Palette.dimming
    }
    background: PanelBackground {
        color: Palette.surface
        radius: 14
    }
    contentItem: FocusScope {
        Accessible.description: confirmation.selection.deleteConfirmText
        Accessible.name: confirmation.title
        Accessible.role: Accessible.Dialog
        focus: true
        implicitHeight: childrenRect.height

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
                color: Palette.textPrimary
                font.pixelSize: 11
                horizontalAlignment: Text.AlignHCenter
                objectName: "alertMessage"
                text: confirmation.selection.deleteConfirmText
                width: parent.width
                wrapMode: Text.Wrap
            }
            Item {
                height: 6
                width: 1
            }
            Row {
                spacing: 8
                width: parent.width

                FilledButton {
                    color: Palette.textPrimary
                    fill: Palette.edge
                    focus: true
                    height: 28
                    objectName: "cancelButton"
                    text: "キャンセル"
                    width: (parent.width - 8) / 2

                    onClicked: confirmation.selection.cancelDeletion()
                }
                FilledButton {
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
