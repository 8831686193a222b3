import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The editor over the dimmed window. It fills the window, so that it receives clicks beside the editor.
Panel {
    id: panel

    required property AlarmEditor editor

    // The open list of a picker is modal itself, and would receive no wheel events in front of another modal popup.
    // Reading `popup` instead of `down` would create the list of a picker as soon as it has the focus.
    readonly property bool isListOpen: (contentItem.Window.activeFocusItem as T.ComboBox)?.down ?? false

    dim: false
    height: parent ? parent.height : 0
    modal: !isListOpen
    padding: 0
    width: parent ? parent.width : 0

    background: Rectangle {
        color: Palette.dimming
    }
    // qmllint disable deferred-property-id
    contentItem: FocusScope {
        // qmllint enable deferred-property-id
        Accessible.name: editView.title
        Accessible.role: Accessible.Dialog
        focus: true
        // Fades as a single picture; the list must not show through between the parts.
        layer.enabled: panel.opacity < 1

        Keys.onEscapePressed: panel.editor.cancelUnchanged()

        MouseArea {
            anchors.fill: parent

            onClicked: panel.editor.cancel()
        }

        // Takes the clicks between the controls.
        MouseArea {
            anchors.fill: editView
        }
        AlarmEditView {
            id: editView

            anchors.centerIn: parent
            editor: panel.editor
            height: Math.max(parent.height - 40, Math.min(implicitHeight, parent.height))
            objectName: "editorPanel"
            width: Math.max(Math.min(parent.width - 40, 460), implicitWidth)
        }

        // Takes the second click of the double click that opened the editor.
        MouseArea {
            anchors.fill: parent
            objectName: "doubleClickGuard"
            visible: !panel.opened
        }
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
