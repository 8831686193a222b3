import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A menu that opens where it was asked for. Its items are ContextMenuItems and ContextMenuSeparators.
T.Menu {
    id: menu

    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    implicitWidth: 150
    margins: 4
    modal: true
    padding: 5

    T.Overlay.modal: Item {
    }
    background: Item {
        PanelShadow {
            anchors.fill: panel
            color: Qt.alpha("black", 0.5)
            cornerRadius: 8
            radius: 12
        }
        ContinuousRectangle {
            id: panel

            anchors.fill: parent
            borderColor: Qt.alpha(Palette.textPrimary, 0.14)
            borderWidth: 1
            color: Qt.lighter(Palette.surface, 1.12)
            radius: 8
        }
    }
    contentItem: ListView {
        currentIndex: menu.currentIndex
        implicitHeight: contentHeight
        interactive: false
        model: menu.contentModel
    }
}
