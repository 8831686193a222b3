import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A line of text on a smooth surface. React to `textEdited`.
T.TextField {
    id: field

    Accessible.name: placeholderText
    color: Palette.textPrimary
    implicitHeight: Math.ceil(contentHeight + topPadding + bottomPadding)
    implicitWidth: 160
    padding: 8
    selectByMouse: true
    selectedTextColor: "black"
    selectionColor: Palette.accent
    verticalAlignment: TextInput.AlignVCenter

    background: ContinuousRectangle {
        borderColor: field.activeFocus ? Qt.alpha(Palette.accent, 0.75) : "transparent"
        borderWidth: 1.5
        color: Palette.background
        radius: 8
    }

    HoverHandler {
        cursorShape: Qt.IBeamCursor
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
