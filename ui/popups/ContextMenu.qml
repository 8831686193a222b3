import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A menu that opens at its position, with ContextMenuItems.
T.Menu {
    id: menu

    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    implicitWidth: 150
    margins: 4
    modal: true
    padding: 5

    T.Overlay.modal: Item {
    }
    background: PanelBackground {
        color: Qt.lighter(Palette.surface, 1.12)
        radius: 8
        shadowRadius: 12
    }
    contentItem: ListView {
        Accessible.name: "メニュー"
        Accessible.role: Accessible.PopupMenu
        currentIndex: menu.currentIndex
        implicitHeight: contentHeight
        interactive: false
        model: menu.contentModel
    }
}
