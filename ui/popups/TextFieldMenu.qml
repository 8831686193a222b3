import QtQuick 2.15
import QtQuick.Templates as T

ContextMenu {
    id: menu

    required property T.TextField field

    ContextMenuItem {
        enabled: menu.field.selectedText !== ""
        text: "切り取り"

        onTriggered: menu.field.cut()
    }
    ContextMenuItem {
        enabled: menu.field.selectedText !== ""
        text: "コピー"

        onTriggered: menu.field.copy()
    }
    ContextMenuItem {
        enabled: menu.field.canPaste
        text: "貼り付け"

        onTriggered: menu.field.paste()
    }
    ContextMenuItem {
        enabled: menu.field.length > 0
        text: "すべて選択"

        onTriggered: menu.field.selectAll()
    }
}
