import QtQuick 2.15
import Kova

PlainButton {
    required property AlarmEditor editor
    required property int index
    readonly property bool isSelected: editor.group.repeatsOn(index)
    required property string modelData

    checkable: true
    checked: isSelected
    color: isSelected ? Palette.textOnAccent : Palette.textSecondary
    cornerRadius: 16
    fill: isSelected ? Palette.accent : Palette.background
    font.pixelSize: 12
    font.weight: Font.Medium
    implicitHeight: 32
    implicitWidth: 32
    text: modelData

    onClicked: editor.toggleDay(index)
}
