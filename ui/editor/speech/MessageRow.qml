import QtQuick 2.15
import Kova

// A spoken message and the button that speaks it once.
Item {
    id: row

    required property string message
    required property string placeholder

    signal edit(string text)
    signal tryOut

    implicitHeight: field.implicitHeight

    TextField {
        id: field

        anchors.left: parent.left
        anchors.right: button.left
        anchors.rightMargin: 6
        font.pixelSize: 13
        placeholderText: row.placeholder
        text: row.message

        onTextEdited: row.edit(text)
    }
    PlainButton {
        id: button

        Accessible.name: toolTip + " " + row.placeholder
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        cornerRadius: width / 2
        enabled: row.message !== ""
        toolTip: "TTS試聴"

        contentItem: Symbol {
            color: Palette.accent
            name: "play.circle"
            size: 16
        }

        onClicked: row.tryOut()
    }
}
