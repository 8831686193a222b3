import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The editor as a panel over the dimmed window. It fills the window, so that a click beside the panel is its own.
T.Popup {
    id: panel

    required property AlarmEditor editor

    // The list of a picker is modal itself, and would get no wheel in front of another modal popup.
    readonly property bool isListOpen: contentItem.Window.activeFocusItem?.popup?.visible ?? false // qmllint disable

    closePolicy: T.Popup.NoAutoClose
    dim: false
    focus: true
    height: parent ? parent.height : 0
    modal: !isListOpen
    padding: 0
    parent: T.Overlay.overlay
    width: parent ? parent.width : 0

    background: Rectangle {
        color: Palette.dimming
    }

    // While it fades it is one picture, lest what lies behind shows through between its pieces.
    contentItem: EditorStage {
        editor: panel.editor
        focus: true
        isSettled: panel.opened
        layer.enabled: panel.opacity < 1
    }
    enter: PanelTransition {
        growing: panel.contentItem
        shows: true
    }
    exit: PanelTransition {
        growing: panel.contentItem
        shows: false
    }
}
