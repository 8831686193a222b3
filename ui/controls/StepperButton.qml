import QtQuick 2.15
import Kova

Item {
    id: button

    required property bool isHovered
    required property bool isPressed
    required property bool isUsable
    required property string symbol

    implicitHeight: 13
    implicitWidth: 20

    ContinuousRectangle {
        anchors.fill: parent
        anchors.margins: 1
        color: !button.isUsable ? "transparent" : button.isPressed ? Qt.alpha(Palette.textPrimary, 0.25) : button.isHovered ? Palette.control : "transparent"
        radius: 5
    }
    Symbol {
        anchors.centerIn: parent
        color: Palette.textPrimary
        name: button.symbol
        opacity: button.isUsable ? 1 : 0.35
        size: 8
    }
}
