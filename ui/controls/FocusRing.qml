import Kova

// The ring around its parent that shows where the keyboard is.
ContinuousRectangle {
    required property bool shown

    // Between the parent's edge and the ring.
    property real gap: 1
    property real cornerRadius: 6

    anchors.fill: parent
    anchors.margins: -gap - borderWidth
    borderColor: Qt.alpha(Palette.accent, 0.75)
    borderWidth: 2
    radius: cornerRadius + gap + borderWidth
    visible: shown
}
