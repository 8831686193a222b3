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

        placeholderText: row.placeholder
        text: row.message
        width: button.x - 6

        onTextEdited: row.edit(text)
    }
    SymbolButton {
        id: button

        Accessible.name: toolTip + " " + row.placeholder
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        cornerRadius: width / 2
        enabled: row.message !== ""
        symbol: "play.circle"
        symbolSize: 16
        toolTip: "TTS試聴"

        onClicked: row.tryOut()
    }
}
