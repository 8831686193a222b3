import QtQuick 2.15
import Kova

// A panel that floats over the window.
Item {
    id: background

    property color borderColor: Qt.alpha(Palette.textPrimary, 0.12)
    required property color color
    required property real radius
    property real shadowRadius: 20

    PanelShadow {
        anchors.fill: parent
        color: Qt.alpha("black", 0.5)
        cornerRadius: background.radius
        radius: background.shadowRadius
    }
    ContinuousRectangle {
        anchors.fill: parent
        borderColor: background.borderColor
        borderWidth: 1
        color: background.color
        radius: background.radius
    }
}
