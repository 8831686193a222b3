import QtQuick 2.15
import Kova

// The editor in the middle of the window, with its shadow.
FocusScope {
    id: stage

    required property AlarmEditor editor
    required property bool isSettled

    Accessible.name: editView.title
    Accessible.role: Accessible.Dialog

    Keys.onEscapePressed: editor.cancelUnchanged()

    // In front of the dimming, which lies where no click comes.
    MouseArea {
        anchors.fill: parent
        objectName: "dimming"

        onClicked: stage.editor.cancel()
    }
    PanelShadow {
        anchors.fill: editView
        radius: 20
    }

    // Clicks between the controls stay here.
    MouseArea {
        anchors.fill: editView
    }
    AlarmEditView {
        id: editView

        anchors.centerIn: parent
        cornerRadius: 16
        editor: stage.editor
        height: Math.max(parent.height - 40, Math.min(implicitHeight, parent.height))
        objectName: "editorPanel"
        width: Math.max(Math.min(parent.width - 40, 460), implicitWidth)

        onCancel: stage.editor.cancel()
        onSave: stage.editor.save()
    }

    // The second half of a double click is not for what appears under it.
    MouseArea {
        anchors.fill: parent
        visible: !stage.isSettled
    }
}
