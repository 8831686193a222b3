import QtQuick 2.15
import QtQuick.Templates as T
import Kova

T.CheckBox {
    id: control

    Accessible.name: text
    font.pixelSize: 13
    implicitHeight: Math.ceil(Math.max(implicitContentHeight, 16))
    implicitWidth: Math.ceil(implicitContentWidth)

    contentItem: Text {
        color: Palette.textPrimary
        font: control.font
        leftPadding: 16 + control.spacing
        text: control.text
        verticalAlignment: Text.AlignVCenter
    }
    indicator: ContinuousRectangle {
        borderColor: Qt.alpha(Palette.textSecondary, 0.7)
        borderWidth: control.checked ? 0 : 1
        color: control.checked ? Palette.accent : control.hovered ? Palette.hovered : Palette.control
        height: 16
        opacity: control.down ? Palette.pressed : 1
        radius: 4.5
        width: 16
        y: Math.round((control.height - height) / 2)

        FocusRing {
            cornerRadius: 4.5
            target: control
        }
        Symbol {
            anchors.centerIn: parent
            color: Palette.textOnAccent
            name: "checkmark"
            size: 10
            visible: control.checked
        }
    }
    spacing: 8
}
