import QtQuick 2.15
import Kova

// The times of a run's alarms in ringing order, scrolled sideways.
ContinuousRectangle {
    id: strip

    required property TimelineModel timeline

    color: Palette.background
    implicitHeight: caption.implicitHeight + list.height + 20
    radius: 8

    Text {
        id: caption

        color: Palette.textSecondary
        font.pixelSize: 11
        text: "タイムライン"
        x: 8
        y: 8
    }
    ListView {
        id: list

        Accessible.name: caption.text
        Accessible.role: Accessible.List
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        height: 4 + sample.implicitHeight + 4
        model: strip.timeline
        orientation: ListView.Horizontal
        spacing: 8
        width: strip.width - 16
        x: 8
        y: caption.y + caption.height + 4

        delegate: TimelineItem {
        }
    }
    TimelineItem {
        id: sample

        index: 0
        isLast: false
        timeText: "0:00"
        visible: false
    }
}
