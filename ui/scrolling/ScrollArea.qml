import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A vertical scroll area with a visible indicator, which follows the keyboard focus to controls out of sight.
Item {
    id: area

    // Of the indicator from the top and the bottom, as for round corners.
    property real barInset: 0
    default property alias content: flickable.flickableData
    property alias contentHeight: flickable.contentHeight
    property alias contentY: flickable.contentY
    readonly property Item focusItem: Window.activeFocusItem
    property bool isScrolledByKey: false

    function isInside(item) {
        let ancestor = item;
        while (ancestor && ancestor !== flickable.contentItem)
            ancestor = ancestor.parent;
        return ancestor !== null;
    }

    // With some room around it.
    function reveal(item) {
        flickable.cancelFlick();
        const top = item.mapToItem(flickable.contentItem, 0, 0).y - 12;
        const bottom = top + item.height + 24;
        if (top < flickable.contentY)
            flickable.contentY = Math.max(0, top);
        else if (bottom > flickable.contentY + flickable.height)
            flickable.contentY = Math.min(bottom, flickable.contentHeight) - flickable.height;
    }

    // What the pointer has pressed stays under it. An item knows why it has the focus only after it has got it.
    function follow() {
        if (focusItem && focusItem.focusReason !== Qt.MouseFocusReason && isInside(focusItem)) // qmllint disable
            reveal(focusItem);
    }

    // What the keyboard works on comes back into sight.
    function followUse() {
        if (!isScrolledByKey && focusItem && isInside(focusItem))
            reveal(focusItem);
        isScrolledByKey = false;
    }

    onFocusItemChanged: Qt.callLater(follow) // qmllint disable
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
        isScrolledByKey = event.accepted;
        if (event.accepted) {
            flickable.cancelFlick();
            flickable.contentY = targets[event.key];
        }
    }

    Connections {
        function onKeyUsed() {
            area.followUse();
        }

        target: area.Window.window
    }
    Connections {
        function onPreeditTextChanged() {
            area.followUse();
        }

        ignoreUnknownSignals: true
        target: area.focusItem
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
    MouseDragGuard {
        anchors.fill: parent
        flickable: flickable
    }
}
