import QtQuick 2.15
import Kova

// The edit mode's bar: selects all or none, and asks to delete what is selected. Not a rectangle of the toolkit's: its
// software renderer leaves behind what moves under an opaque one.
ContinuousRectangle {
    id: editBar

    required property HomeSelection selection

    color: Palette.surface
    height: Math.max(deleteButton.height, selectAllButton.height) + 20

    // Clicks beside the buttons stay here.
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
