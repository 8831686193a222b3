import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A line of text on a smooth surface. Emits `textEdited` for changes by the user.
T.TextField {
    id: field

    // The text around the composition.
    property string textComposedIn

    function askMenu(x: real, y: real) {
        menu.show("popups/TextFieldMenu.qml", {
                "field": field,
                "x": x,
                "y": y
            });
    }

    // Replaces pasted line breaks and tabs by spaces. Each step emits textEdited, which calls this again for the next one;
    // all steps can be undone.
    function keepOneLine() {
        const found = text.match(/\r\n|[\t-\r\u2028\u2029]/);
        if (found) {
            remove(found.index, found.index + found[0].length);
            insert(found.index, " ");
        }
    }

    Accessible.name: placeholderText
    color: Palette.textPrimary
    font.pixelSize: 13
    // The template clips the text at its padding. There is none above and below, since some scripts exceed the line
    // height of the font that the text is laid out for.
    implicitHeight: Math.ceil(contentHeight) + 16
    leftPadding: 8
    persistentSelection: menu.item !== null
    rightPadding: 8
    selectedTextColor: Palette.textOnAccent
    selectionColor: Palette.accent
    verticalAlignment: TextInput.AlignVCenter

    background: ContinuousRectangle {
        borderColor: field.activeFocus ? Palette.focus : "transparent"
        borderWidth: 1.5
        color: Palette.background
        radius: 8
    }

    Keys.onMenuPressed: askMenu(cursorRectangle.x, cursorRectangle.y + cursorRectangle.height)
    // Qt's ibus plugin keeps a cancelled composition until it is reset, and would commit it with the next change of focus.
    onPreeditTextChanged: {
        if (preeditText !== "")
            textComposedIn = text;
        else if (text === textComposedIn)
            Qt.inputMethod.reset(); // qmllint disable
    }
    onTextEdited: keepOneLine()

    // Qt commits the composition when it is clicked, and ibus commits it once more. So a click does not end it.
    MouseArea {
        acceptedButtons: field.inputMethodComposing ? Qt.LeftButton | Qt.RightButton : Qt.RightButton
        anchors.fill: parent
        cursorShape: Qt.IBeamCursor

        onClicked: mouse => {
            if (mouse.button === Qt.LeftButton)
                return;
            field.forceActiveFocus(Qt.MouseFocusReason);
            field.askMenu(mouse.x, mouse.y);
        }
    }
    PopupLoader {
        id: menu
    }

    // Underlines the composition, as far as it is inside the field. Depends on the cursor, which is placed after the text.
    Rectangle {
        readonly property real start: field.cursorRectangle.x >= 0 ? field.leftPadding + field.positionToRectangle(field.cursorPosition).x : 0

        color: field.color
        height: 1
        visible: field.preeditText !== ""
        width: Math.max(0, Math.min(Math.round(start) + Math.ceil(composed.advanceWidth), field.width - field.rightPadding) - x)
        x: Math.max(Math.round(start), field.leftPadding)
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
