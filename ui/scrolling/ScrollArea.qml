import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A vertical scroll area with a visible indicator that scrolls to the focused control.
Item {
    id: area

    // Distance of the indicator from the top and the bottom, for rounded corners.
    property real barInset: 0
    default property alias content: flickable.flickableData
    property alias contentHeight: flickable.contentHeight
    property alias contentY: flickable.contentY

    Keys.onPressed: event => {
        const end = Math.max(0, flickable.contentHeight - flickable.height);
        const page = flickable.height - 40;
        const targets = {
            [Qt.Key_Home]: 0,
            [Qt.Key_End]: end,
            [Qt.Key_PageUp]: Math.max(0, flickable.contentY - page),
            [Qt.Key_PageDown]: Math.min(end, flickable.contentY + page)
        };
        event.accepted = event.key in targets;
        if (event.accepted) {
            input.isSuspended = true;
            flickable.cancelFlick();
            flickable.contentY = targets[event.key];
        }
    }

    Flickable {
        id: flickable

        T.ScrollBar.vertical: ScrollBar {
            bottomPadding: 2 + area.barInset
            topPadding: 2 + area.barInset
        }
        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentWidth: width
    }
    ScrollInput {
        id: input

        anchors.fill: parent
        flickable: flickable
    }
}
