import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The editor as a panel over the dimmed window. It fills the window, so that a click beside the panel is its own.
T.Popup {
    id: panel

    required property AlarmEditor editor

    closePolicy: T.Popup.NoAutoClose
    dim: false
    focus: true
    height: parent ? parent.height : 0
    modal: true
    padding: 0
    parent: T.Overlay.overlay
    width: parent ? parent.width : 0

    background: Rectangle {
        color: Qt.alpha("black", 0.4)

        MouseArea {
            anchors.fill: parent
            objectName: "dimming"

            onClicked: panel.editor.cancel()
        }
    }

    // While it fades the panel is one picture, lest what lies behind shows through between its pieces.
    contentItem: FocusScope {
        id: stage

        focus: true
        layer.enabled: panel.opacity < 1

        PanelShadow {
            anchors.fill: editView
            color: Qt.alpha("black", 0.5)
            cornerRadius: 16
            radius: 20
        }
        MouseArea {
            anchors.fill: editView
        }
        AlarmEditView {
            id: editView

            anchors.centerIn: parent
            cornerRadius: 16
            editor: panel.editor
            height: Math.max(parent.height - 40, Math.min(implicitHeight, parent.height))
            objectName: "editorPanel"
            width: Math.max(Math.min(parent.width - 40, 460), implicitWidth)

            onCancel: panel.editor.cancel()
            onSave: panel.editor.save()
        }
    }
    enter: PanelTransition {
        growing: stage
        shows: true
    }
    exit: PanelTransition {
        growing: stage
        shows: false
    }
}
