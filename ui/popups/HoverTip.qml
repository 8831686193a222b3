import QtQuick 2.15

// A tooltip at its parent, made when the pointer rests there and gone when it leaves.
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
