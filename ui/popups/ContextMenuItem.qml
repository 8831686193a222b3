import QtQuick 2.15
import QtQuick.Templates as T
import Kova

T.MenuItem {
    id: item

    property bool isDestructive: false

    Accessible.name: text
    font.pixelSize: 13
    horizontalPadding: 10
    implicitHeight: 24
    objectName: "menuItem"

    background: ContinuousRectangle {
        color: !item.highlighted ? "transparent" : item.isDestructive ? Palette.danger : Palette.accent
        radius: 5
    }
    contentItem: Text {
        color: item.highlighted ? (item.isDestructive ? Palette.textOnDanger : Palette.textOnAccent) : item.isDestructive ? Qt.lighter(Palette.danger, 1.25) : Palette.textPrimary
        elide: Text.ElideRight
        opacity: item.enabled ? 1 : Palette.disabled
        font: item.font
        text: item.text
        verticalAlignment: Text.AlignVCenter
    }
}
