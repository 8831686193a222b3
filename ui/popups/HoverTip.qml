import QtQuick 2.15

// The tooltip of its parent, created when the pointer enters and deleted when it leaves.
Loader {
    required property bool shown
    required property string text

    readonly property bool isWanted: shown && text !== ""

    onTextChanged: if (item)
        item.text = text // qmllint disable
    onIsWantedChanged: isWanted ? setSource("ToolTip.qml", {
            "parent": parent,
            "text": text,
            "visible": true
        }) : setSource("")
}
