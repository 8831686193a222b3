import QtQuick 2.15
import QtQuick.Templates as T
import Kova

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
    T.MenuSeparator {
        implicitHeight: 11
        padding: 5

        contentItem: Rectangle {
            color: Palette.edge
            implicitHeight: 1
        }
    }
    ContextMenuItem {
        isDestructive: true
        text: "削除"

        onTriggered: menu.home.remove(menu.groupId)
    }
}
