import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A panel in the middle of the dimmed window. Only its own controls close it.
T.Popup {
    id: panel

    property color color: Palette.surface
    property real radius: 14

    closePolicy: T.Popup.NoAutoClose
    focus: true
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    modal: true
    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0

    T.Overlay.modal: Rectangle {
        color: Palette.dimming
    }
    background: PanelBackground {
        color: panel.color
        radius: panel.radius
    }
}
