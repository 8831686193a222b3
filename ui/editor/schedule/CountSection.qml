import QtQuick 2.15
import Kova

SectionCard {
    id: section

    required property AlarmEditor editor
    readonly property bool hasSequence: editor.group.alarmCount > 1

    title: "アラーム回数"

    Stepper {
        label: "回数"
        maximum: section.editor.maximumAlarmCount
        number: section.editor.group.alarmCount
        text: section.editor.group.alarmCountText
        width: parent.width

        onStep: value => section.editor.group.alarmCount = value
    }
    Stepper {
        label: "間隔"
        maximum: section.editor.maximumIntervalMinutes
        number: section.editor.group.intervalMinutes
        text: section.editor.group.intervalText
        visible: section.hasSequence
        width: parent.width

        onStep: value => section.editor.group.intervalMinutes = value
    }
    TimelineStrip {
        times: section.editor.timeline
        visible: section.hasSequence
        width: parent.width
    }
}
