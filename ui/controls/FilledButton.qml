import QtQuick 2.15
import Kova

// A button that shows its text on a filled shape.
PlainButton {
    id: button

    required property color fill

    cornerRadius: 6

    background: ContinuousRectangle {
        color: button.fill
        radius: button.cornerRadius
    }
}
