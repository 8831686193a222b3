import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// One entry of a picker, with a mark when it is the chosen one.
T.ItemDelegate {
    id: item

    required property int index
    required property T.ComboBox comboBox
    readonly property bool isChosen: index === comboBox.currentIndex
    required property string modelData

    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: isChosen
    font.pixelSize: 13
    height: 24
    highlighted: ListView.isCurrentItem
    leftPadding: 24
    text: modelData
    width: ListView.view ? ListView.view.width : 0

    background: ContinuousRectangle {
        anchors.fill: parent
        anchors.leftMargin: 4
        anchors.rightMargin: 12
        color: item.highlighted ? Palette.accent : "transparent"
        radius: 5
    }
    contentItem: Text {
        color: item.highlighted ? Palette.textOnAccent : Palette.textPrimary
        font: item.font
        text: item.text
        verticalAlignment: Text.AlignVCenter
    }

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        color: item.highlighted ? Palette.textOnAccent : Palette.textPrimary
        name: "checkmark"
        size: 9
        visible: item.isChosen
        x: 9
    }
}
