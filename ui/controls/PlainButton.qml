import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A button that shows its text or another content item, without a bezel or on a filled shape.
T.Button {
    id: button

    property color color: Palette.accent

    // Of the shape and the focus ring.
    property real cornerRadius: 6
    property color fill: "transparent"
    property string toolTip

    Accessible.name: text !== "" ? text : toolTip
    implicitHeight: Math.ceil(implicitContentHeight + topPadding + bottomPadding)
    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    opacity: !enabled ? Palette.disabled : down ? Palette.pressed : 1

    background: ContinuousRectangle {
        color: button.fill
        radius: button.cornerRadius
    }
    contentItem: Text {
        color: button.color
        font: button.font
        horizontalAlignment: Text.AlignHCenter
        text: button.text
        verticalAlignment: Text.AlignVCenter
    }

    FocusRing {
        cornerRadius: button.cornerRadius
        target: button
    }
    HoverTip {
        shown: button.hovered && !button.down
        text: button.toolTip
    }
}
