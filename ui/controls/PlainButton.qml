import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A button without a bezel that shows its text or another content item.
T.Button {
    id: button

    property color color: Palette.accent

    // Of the focus ring and the hover mark.
    property real cornerRadius: 6

    // Shows a faint surface under the pointer.
    property bool marksHover: false
    property string toolTip

    Accessible.name: text !== "" ? text : toolTip
    implicitHeight: Math.ceil(implicitContentHeight + topPadding + bottomPadding)
    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    opacity: !enabled ? Palette.disabled : down ? Palette.pressed : 1

    background: ContinuousRectangle {
        color: button.marksHover && button.hovered ? Qt.alpha(Palette.textPrimary, 0.08) : "transparent"
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
