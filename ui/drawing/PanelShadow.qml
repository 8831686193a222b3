import QtQuick 2.15

// The soft dark shadow around the edges of its parent, or of another item that it fills.
BorderImage {
    // How far it is blurred, as far as there is a picture of it; nothing is left of it at 1.5 times that distance.
    required property int radius

    anchors.fill: parent
    anchors.margins: -1.5 * radius
    source: "qrc:/shadows/" + radius + ".png"

    // The pixel in the middle is stretched.
    border {
        bottom: (sourceSize.height - 1) / 2
        left: (sourceSize.width - 1) / 2
        right: (sourceSize.width - 1) / 2
        top: (sourceSize.height - 1) / 2
    }
}
