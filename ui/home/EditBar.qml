import QtQuick 2.15
import Kova

// The bar of the edit mode: selects all groups or none, and deletes the selected ones. Not a Rectangle: the software
// renderer does not repaint correctly below an opaque one.
ContinuousRectangle {
    id: editBar

    required property HomeEditMode selection

    color: Palette.surface
    height: Math.max(deleteButton.height, selectAllButton.height) + 20

    // Takes the clicks beside the buttons.
    MouseArea {
        anchors.fill: parent
    }
    PlainButton {
        id: selectAllButton

        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        font.pixelSize: 13
        objectName: "selectAllButton"
        text: editBar.selection.selectAllText

        onClicked: editBar.selection.toggleAll()
    }
    FilledButton {
        id: deleteButton

        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        bottomPadding: 6
        color: Palette.textOnDanger
        cornerRadius: 8
        enabled: !editBar.selection.isEmpty
        fill: Qt.alpha(Palette.danger, enabled ? 1 : Palette.disabled)
        font.pixelSize: 13
        leftPadding: 14
        objectName: "deleteButton"
        opacity: down ? Palette.pressed : 1
        rightPadding: 14
        text: editBar.selection.deleteText
        topPadding: 6

        onClicked: editBar.selection.askToDelete()
    }
}
