import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// Asks before something that can't be undone. Escape cancels; nothing but the red button agrees.
T.Popup {
    id: alert

    required property string destructiveText
    required property string message
    required property string title

    signal agree
    signal cancel

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
        color: Qt.alpha("black", 0.4)
    }
    background: PanelBackground {
        color: Palette.surface
        radius: 14
    }
    contentItem: FocusScope {
        Accessible.description: alert.message
        Accessible.name: alert.title
        Accessible.role: Accessible.Dialog
        focus: true
        implicitHeight: childrenRect.height

        Keys.onEscapePressed: alert.cancel()

        Column {
            spacing: 6
            width: parent.width

            Text {
                color: Palette.textPrimary
                font.bold: true
                font.pixelSize: 13
                horizontalAlignment: Text.AlignHCenter
                objectName: "alertTitle"
                text: alert.title
                width: parent.width
            }
            Text {
                color: Palette.textPrimary
                font.pixelSize: 11
                horizontalAlignment: Text.AlignHCenter
                objectName: "alertMessage"
                text: alert.message
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
                    fill: Qt.alpha(Palette.textPrimary, 0.12)
                    focus: true
                    height: 28
                    objectName: "cancelButton"
                    text: "キャンセル"
                    width: (parent.width - 8) / 2

                    onClicked: alert.cancel()
                }
                FilledButton {
                    color: "white"
                    fill: Palette.danger
                    height: 28
                    objectName: "destructiveButton"
                    text: alert.destructiveText
                    width: (parent.width - 8) / 2

                    onClicked: alert.agree()
                }
            }
        }
    }
}
