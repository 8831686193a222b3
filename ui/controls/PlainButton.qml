import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A button without a bezel: its face is its text, or the content item that its user gives it.
T.Button {
    id: button

    property color color: Palette.accent

    // Of the focus ring and the hover mark; as the face's own where it has one.
    property real cornerRadius: 6

    // A faint surface under the pointer, for faces that have none.
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
        shown: button.visualFocus
    }
    HoverTip {
        shown: button.hovered && !button.down
        text: button.toolTip
    }
}
