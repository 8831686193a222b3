import QtQuick 2.15
import Kova

// A panel that floats over the window.
Item {
    id: background

    required property color color
    required property real radius
    property int shadowRadius: 20

    PanelShadow {
        radius: background.shadowRadius
    }
    ContinuousRectangle {
        anchors.fill: parent
        borderColor: Palette.edge
        borderWidth: 1
        color: background.color
        radius: background.radius
    }
}
