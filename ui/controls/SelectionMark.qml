import QtQuick
import Kova

// A round mark that its user checks: the model's state alone decides what it shows.
PlainButton {
    id: mark

    required property bool checked

    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.role: Accessible.CheckBox
    cornerRadius: 11
    implicitHeight: 22
    implicitWidth: 22

    contentItem: Item {
        ContinuousRectangle {
            anchors.fill: parent
            borderColor: mark.checked ? Palette.accent : Palette.textSecondary
            borderWidth: 2
            color: mark.checked ? Palette.accent : "transparent"
            radius: 11
        }
        Symbol {
            anchors.centerIn: parent
            color: "black"
            name: "checkmark"
            size: 11
            visible: mark.checked
        }
    }
}
