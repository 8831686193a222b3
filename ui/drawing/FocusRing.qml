import QtQuick 2.15
import Kova

// The ring around its parent that shows where the keyboard is.
ContinuousRectangle {
    // The parent's.
    required property real cornerRadius

    // Between the parent's edge and the ring.
    property real gap: 1

    anchors.fill: parent
    anchors.margins: -gap - 2
    borderColor: Palette.focus
    borderWidth: 2
    radius: cornerRadius + gap + 2
}
