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

        anchors.verticalCenter: parent.verticalCenter
        font.pixelSize: 13
        objectName: "selectAllButton"
        text: editBar.selection.isAllSelected ? "全解除" : "全選択"
        x: 16

        onClicked: editBar.selection.toggleAll()
    }
    PlainButton {
        id: deleteButton

        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textOnDanger
        cornerRadius: 8
        enabled: editBar.selection.count > 0
        fill: Qt.alpha(Palette.danger, enabled ? 1 : Palette.disabled)
        font.pixelSize: 13
        horizontalPadding: 14
        objectName: "deleteButton"
        opacity: down ? Palette.pressed : 1 // the fill shows whether it is enabled
        text: editBar.selection.count + "件を削除"
        verticalPadding: 6
        x: parent.width - width - 16

        onClicked: editBar.selection.askToDelete()
    }
}
