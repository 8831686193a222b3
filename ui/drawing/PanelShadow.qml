import QtQuick 2.15

// The shadow of its parent, or of another item that it fills.
BorderImage {
    // The blur radius, one of those with an image. The shadow ends at 1.5 times the radius.
    required property int radius

    anchors.fill: parent
    anchors.margins: -1.5 * radius
    source: "qrc:/shadows/" + radius + ".png"

    // Stretches the middle pixel.
    border {
        bottom: (sourceSize.height - 1) / 2
        left: (sourceSize.width - 1) / 2
        right: (sourceSize.width - 1) / 2
        top: (sourceSize.height - 1) / 2
    }
}
