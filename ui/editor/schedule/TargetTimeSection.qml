import QtQuick 2.15
import Kova

SectionCard {
    id: section

    required property AlarmEditor editor

    isStretched: false
    title: "目標時刻"

    Row {
        spacing: 4

        PopUpPicker {
            Accessible.name: "時"
            focus: true
            currentIndex: section.editor.group.hourIndex
            displayText: section.editor.group.hourText
            model: section.editor.hourTexts

            onActivated: index => section.editor.group.hourIndex = index
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            // A colon is drawn in the lower half of its line.
            anchors.verticalCenterOffset: -2
            color: Palette.accent
            font.bold: true
            font.pixelSize: 20
            text: ":"
            width: Math.ceil(implicitWidth)
        }
        PopUpPicker {
            Accessible.name: "分"
            currentIndex: section.editor.group.minuteIndex
            displayText: section.editor.group.minuteText
            model: section.editor.minuteTexts

            onActivated: index => section.editor.group.minuteIndex = index
        }
    }
    Row {
        spacing: 8

        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: Palette.textSecondary
            font.pixelSize: 12
            text: "目標時刻で"
        }
        SegmentedControl {
            Accessible.name: "目標時刻で"
            currentIndex: section.editor.group.startBefore ? 0 : 1
            texts: ["終了", "開始"]

            onActivated: index => section.editor.group.startBefore = index === 0
        }
    }
}
