import QtQuick 2.15
import Kova

// The menu of one group's card.
ContextMenu {
    id: menu

    required property string groupId
    required property HomeScreen home

    ContextMenuItem {
        text: "編集"

        onTriggered: menu.home.edit(menu.groupId)
    }
    ContextMenuItem {
        text: "複製"

        onTriggered: menu.home.duplicate(menu.groupId)
    }
    ContextMenuSeparator {
    }
    ContextMenuItem {
        isDestructive: true
        text: "削除"

        onTriggered: menu.home.remove(menu.groupId)
    }
}
