import QtQuick 2.15
import Kova

Column {
    id: section

    required property AlarmEditor editor

    spacing: 10

    LabeledStepper {
        label: "回数"
        maximum: 20
        minimum: 1
        text: section.editor.alarmCountText
        number: section.editor.alarmCount
        width: parent.width

        onStep: value => section.editor.alarmCount = value
    }
    LabeledStepper {
        label: "間隔"
        maximum: 30
        minimum: 1
        text: section.editor.intervalText
        number: section.editor.intervalMinutes
        visible: section.editor.hasSequence
        width: parent.width

        onStep: value => section.editor.intervalMinutes = value
    }
    TimelineStrip {
        timeline: section.editor.timeline
        visible: section.editor.hasSequence
        width: parent.width
    }
}
