import QtQuick 2.15
import Kova

// A round check mark. Shows the model's state; react to `clicked`.
PlainButton {
    id: mark

    required property bool isSelected

    checkable: true
    checked: isSelected
    cornerRadius: 11
    implicitHeight: 22
    implicitWidth: 22
    objectName: "selectionMark"

    background: ContinuousRectangle {
        borderColor: mark.isSelected ? Palette.accent : Palette.textSecondary
        borderWidth: 2
        color: mark.isSelected ? Palette.accent : "transparent"
        radius: 11
    }
    contentItem: Symbol {
        color: Palette.textOnAccent
        name: "checkmark"
        size: 11
        visible: mark.isSelected
    }
}
