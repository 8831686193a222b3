import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A vertical scroll area with a visible indicator, which follows the keyboard focus to controls out of sight.
Item {
    id: area

    default property alias content: flickable.flickableData
    property alias contentHeight: flickable.contentHeight
    property alias contentY: flickable.contentY
    readonly property Item focusItem: Window.activeFocusItem

    function isInside(item) {
        let ancestor = item;
        while (ancestor && ancestor !== flickable.contentItem)
            ancestor = ancestor.parent;
        return ancestor !== null;
    }

    // With some room around it.
    function reveal(item) {
        const top = item.mapToItem(flickable.contentItem, 0, 0).y - 12;
        const bottom = top + item.height + 24;
        if (top < flickable.contentY)
            flickable.contentY = Math.max(0, top);
        else if (bottom > flickable.contentY + flickable.height)
            flickable.contentY = Math.min(bottom, flickable.contentHeight) - flickable.height;
    }

    onFocusItemChanged: if (focusItem && isInside(focusItem))
        reveal(focusItem)

    Flickable {
        id: flickable

        T.ScrollBar.vertical: ScrollBar {
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
