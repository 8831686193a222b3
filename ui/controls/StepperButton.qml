import QtQuick 2.15
import Kova

// One half of a stepper's buttons.
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
        color: Qt.alpha(Palette.textPrimary, !button.isUsable ? 0 : button.isPressed ? 0.25 : button.isHovered ? 0.1 : 0)
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
