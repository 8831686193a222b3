import QtQuick 2.15
import Kova

// The times of a run's alarms in ringing order. A row wider than the strip is scrolled by a horizontal wheel, by the
// wheel with Shift and by the arrow keys.
ContinuousRectangle {
    id: strip

    required property var times

    color: Palette.background
    implicitHeight: caption.implicitHeight + list.height + 20
    radius: 8

    // Keeps the scroll position, which a new model resets.
    onTimesChanged: {
        const x = list.contentX;
        list.model = times;
        list.scrollTo(x);
    }

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

        function scrollTo(x: real) {
            cancelFlick();
            if (x <= originX)
                positionViewAtBeginning();
            else if (x >= originX + contentWidth - width)
                positionViewAtEnd();
            else
                contentX = x;
        }

        Accessible.name: caption.text
        Accessible.role: Accessible.List
        activeFocusOnTab: activeFocus || contentWidth > width
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        height: 4 + sample.implicitHeight + 4
        keyNavigationEnabled: false
        orientation: ListView.Horizontal
        spacing: 8
        width: strip.width - 16
        x: 8
        y: caption.y + caption.height + 4

        delegate: TimelineItem {
            isLast: index === ListView.view.count - 1
        }

        Keys.onPressed: event => {
            const targets = {
                [Qt.Key_Left]: contentX - sample.width,
                [Qt.Key_Right]: contentX + sample.width,
                [Qt.Key_Home]: originX,
                [Qt.Key_End]: originX + contentWidth
            };
            event.accepted = event.key in targets;
            if (event.accepted)
                scrollTo(targets[event.key]);
        }

        WheelHandler {
            orientation: Qt.Horizontal
            target: null

            onWheel: event => list.scrollTo(list.contentX - event.angleDelta.x / 2)
        }
        WheelHandler {
            acceptedModifiers: Qt.ShiftModifier
            target: null

            onWheel: event => list.scrollTo(list.contentX - event.angleDelta.y / 2)
        }
    }
    FocusRing {
        cornerRadius: strip.radius
        target: list
    }
    TimelineItem {
        id: sample

        index: 1
        isLast: false
        modelData: "0:00"
        visible: false
    }
}
