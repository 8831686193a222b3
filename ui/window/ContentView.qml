import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The root of the main window: the home list, and over it the editor while a group is edited.
Item {
    id: contentView

    required property AlarmEditor editor
    required property HomeScreen home
    // Creates the overlay at the start, so that popups are reported to assistive tools.
    readonly property Item overlay: T.Overlay.overlay

    Accessible.role: Accessible.Pane

    HomeView {
        anchors.fill: parent
        focus: true
        home: contentView.home
    }
    LazyPopup {
        inputs: ({
                "editor": contentView.editor
            })
        isShown: contentView.home.isEditing
        popup: "editor/EditorPanel.qml"
    }
}
