import QtQuick 2.15
import Kova

PlainButton {
    id: chip

    required property int day
    required property AlarmEditor editor
    readonly property bool isSelected: editor.selectedDays[day]

    checkable: true
    checked: isSelected
    color: isSelected ? "black" : Palette.textSecondary
    cornerRadius: 16
    font.pixelSize: 12
    font.weight: Font.Medium
    implicitHeight: 32
    implicitWidth: 32
    text: editor.dayLabels[day]

    background: ContinuousRectangle {
        color: chip.isSelected ? Palette.accent : Palette.background
        radius: 16
    }

    onClicked: editor.toggleDay(day)
}
