import QtQuick 2.15
import Kova

// A panel that floats over the window, with its shadow.
Item {
    id: background

    property color borderColor: Palette.edge
    required property color color
    required property real radius
    // The blur radius, one of those with an image. The shadow ends at 1.5 times the radius.
    property int shadowRadius: 20

    BorderImage {
        anchors.fill: parent
        anchors.margins: -1.5 * background.shadowRadius
        source: "qrc:/shadows/" + background.shadowRadius + ".png"

        // Stretches the middle pixel.
        border {
            bottom: (sourceSize.height - 1) / 2
            left: (sourceSize.width - 1) / 2
            right: (sourceSize.width - 1) / 2
            top: (sourceSize.height - 1) / 2
        }
    }
    ContinuousRectangle {
        anchors.fill: parent
        borderColor: background.borderColor
        borderWidth: 1
        color: background.color
        radius: background.radius
    }
}
