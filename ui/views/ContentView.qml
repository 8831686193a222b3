import QtQuick 2.15
import Kova

// The root of the main window: the home list, and over it the editor while a group is edited.
Item {
    id: contentView

    required property AlarmEditor editor
    required property HomeScreen home

    HomeView {
        anchors.fill: parent
        enabled: !contentView.home.isEditing
        home: contentView.home
    }
    Rectangle {
        anchors.fill: parent
        color: "black"
        opacity: contentView.home.isEditing ? 0.4 : 0
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation {
                duration: 200
                easing.type: Easing.InOutQuad
            }
        }

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true

            onClicked: contentView.editor.cancel()
            onWheel: wheel => wheel.accepted = true
        }
    }
    Loader {
        id: panel

        property bool isShown: contentView.home.isEditing

        active: isShown || opacity > 0
        anchors.centerIn: parent
        height: parent.height - 40
        opacity: isShown ? 1 : 0
        scale: isShown ? 1 : 0.95
        width: Math.min(460, parent.width - 40)

        Behavior on opacity {
            NumberAnimation {
                duration: 200
                easing.type: Easing.InOutQuad
            }
        }
        Behavior on scale {
            NumberAnimation {
                duration: 200
                easing.type: Easing.InOutQuad
            }
        }
        sourceComponent: Item {
            PanelShadow {
                anchors.fill: parent
                color: "#80000000"
                cornerRadius: 16
                radius: 20
            }
            AlarmEditView {
                anchors.fill: parent
                cornerRadius: 16
                editor: contentView.editor

                onCancel: contentView.editor.cancel()
                onSave: contentView.editor.save()
            }
        }
    }
}
