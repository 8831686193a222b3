import QtQuick 2.15

// Covers a flickable and scrolls it to the focused item in it when the item receives the focus by the keyboard or is
// used. The mouse scrolls by the wheel and the scroll bar but does not drag the content, as a finger does.
Item {
    id: input

    required property Flickable flickable
    readonly property Item focusItem: Window.activeFocusItem
    property real marginAbove: 12
    property real marginBelow: 12
    // Scrolls to the whole row of the content that holds the item.
    property bool scrollsToRow: false
    // Whether the key that is being handled scrolls by itself.
    property bool isSuspended: false

    // Returns the child of the content that is or holds an item, null outside.
    function rowOf(item: Item): Item {
        while (item && item.parent !== flickable.contentItem)
            item = item.parent;
        return item;
    }
    // Scrolls to the beginning, the end or by a page. Returns false for other keys.
    function scrollByKey(key: int): bool {
        // The bounds of a list are estimates until its end is laid out.
        if (key === Qt.Key_Home)
            (flickable as ListView)?.positionViewAtBeginning();
        else if (key === Qt.Key_End)
            (flickable as ListView)?.positionViewAtEnd();
        const top = flickable.originY - flickable.topMargin;
        const bottom = Math.max(top, flickable.originY + flickable.contentHeight + flickable.bottomMargin - flickable.height);
        const page = flickable.height - marginAbove - marginBelow - 16;
        const targets = {
            [Qt.Key_Home]: top,
            [Qt.Key_End]: bottom,
            [Qt.Key_PageUp]: Math.max(top, flickable.contentY - page),
            [Qt.Key_PageDown]: Math.min(bottom, flickable.contentY + page)
        };
        if (!(key in targets))
            return false;
        isSuspended = true;
        flickable.cancelFlick();
        flickable.contentY = targets[key];
        return true;
    }
    function scrollTo(item: Item) {
        flickable.cancelFlick();
        const top = item.mapToItem(flickable.contentItem, 0, 0).y;
        flickable.contentY = Math.max(Math.min(flickable.contentY, top - marginAbove), top + item.height + marginBelow - flickable.height);
    }
    function scrollToFocus() {
        const row = rowOf(focusItem);
        if (row)
            scrollTo(scrollsToRow ? row : focusItem);
    }
    function onFocusMoved() {
        if (Window.window?.showsFocus) // qmllint disable
            scrollToFocus();
    }

    onFocusItemChanged: Qt.callLater(onFocusMoved) // qmllint disable

    Binding {
        property: "interactive"
        target: input.flickable
        value: !mouse.active
    }
    PointHandler {
        id: mouse

        acceptedDevices: PointerDevice.Mouse
    }
    Connections {
        function onKeyUsed() {
            if (!input.isSuspended)
                input.scrollToFocus();
            input.isSuspended = false;
        }

        target: input.Window.window
    }
    Connections {
        function onPreeditTextChanged() {
            input.scrollToFocus();
        }

        ignoreUnknownSignals: true
        target: input.focusItem
    }
}
