import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A line of text on a smooth surface. React to `textEdited`.
T.TextField {
    id: field

    function askMenu(x: real, y: real, byKeyboard: bool) {
        menu.show("popups/TextFieldMenu.qml", {
                "field": field,
                "x": x,
                "y": y
            }, byKeyboard);
    }

    // A line has no breaks and no tabs, whatever is pasted. Each step tells of an edit, so the next one is within it; all
    // can be undone.
    function keepOneLine() {
        const found = text.match(/\r\n|[\t-\r\u2028\u2029]/);
        if (found) {
            remove(found.index, found.index + found[0].length);
            insert(found.index, " ");
        }
    }

    Accessible.name: placeholderText
    color: Palette.textPrimary
    // The template cuts the text off at its padding. Some scripts reach below the line of the font that it is laid out
    // for, so the room above and below is none.
    implicitHeight: Math.ceil(contentHeight) + 16
    implicitWidth: 160
    leftPadding: 8
    persistentSelection: menu.item !== null
    rightPadding: 8
    selectByMouse: true
    selectedTextColor: Palette.textOnAccent
    selectionColor: Palette.accent
    verticalAlignment: TextInput.AlignVCenter

    background: ContinuousRectangle {
        borderColor: field.activeFocus ? Palette.focus : "transparent"
        borderWidth: 1.5
        color: Palette.background
        radius: 8
    }

    Keys.onMenuPressed: askMenu(cursorRectangle.x, cursorRectangle.y + cursorRectangle.height, true)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier;
        if (event.accepted)
            askMenu(cursorRectangle.x, cursorRectangle.y + cursorRectangle.height, true);
    }
    onTextEdited: keepOneLine()

    MouseArea {
        acceptedButtons: Qt.RightButton
        anchors.fill: parent
        cursorShape: Qt.IBeamCursor

        onClicked: mouse => {
            field.forceActiveFocus(Qt.MouseFocusReason);
            field.askMenu(mouse.x, mouse.y, false);
        }
    }
    PopupLoader {
        id: menu
    }

    // The text that is being composed. It has its place when the cursor has.
    Rectangle {
        readonly property real start: field.cursorRectangle.x >= 0 ? field.leftPadding + field.positionToRectangle(field.cursorPosition).x : 0

        color: field.color
        height: 1
        visible: field.preeditText !== ""
        width: Math.min(Math.ceil(composed.advanceWidth), field.width - field.rightPadding - x)
        x: Math.round(start)
        y: Math.floor((field.height + field.contentHeight) / 2) - 1
    }
    TextMetrics {
        id: composed

        font: field.font
        text: field.preeditText
    }
    Text {
        anchors.fill: parent
        color: Palette.textSecondary
        elide: Text.ElideRight
        font: field.font
        leftPadding: field.leftPadding
        rightPadding: field.rightPadding
        text: field.placeholderText
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        visible: field.length === 0 && field.preeditText === ""
    }
}
