import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The cards. The keyboard has one current row, which follows the focus; the Tab and the arrow keys lead on from there.
Item {
    id: homeList

    readonly property int count: list.count
    required property HomeScreen home

    // A place in the list where a card's menu is asked for.
    signal menuAsked(string groupId, point place)

    // The keyboard comes to a row's n-th stop, -1 for the last.
    function go(index: int, stop: int) {
        if (index < 0 || index >= count)
            return;
        list.positionViewAtIndex(index, ListView.Contain);
        (list.itemAtIndex(index) as HomeRow).focusStop(stop);
        input.scrollTo(list.currentItem);
    }

    // By a key that scrolls. The keyboard comes along when it is in the list. False for any other key.
    function scroll(key: int): bool {
        list.cancelFlick();
        const page = list.height - list.bottomMargin - list.topMargin - 20;
        const isUp = key === Qt.Key_Home || key === Qt.Key_PageUp;
        if (key === Qt.Key_Home)
            list.positionViewAtBeginning();
        else if (key === Qt.Key_End)
            list.positionViewAtEnd();
        else if (key !== Qt.Key_PageUp && key !== Qt.Key_PageDown)
            return false;
        if (isUp)
            list.contentY = Math.max(list.originY - list.topMargin, list.contentY - page);
        else
            list.contentY = Math.min(list.originY + list.contentHeight + list.bottomMargin - list.height, list.contentY + page);
        const row = input.rowOf(Window.activeFocusItem) as HomeRow;
        if (row)
            go(isUp ? rowAt(list.topMargin) : rowAt(list.height - list.bottomMargin), row.stop());
        return true;
    }

    // At a height of what is in sight, or beside a gap there.
    function rowAt(y: real): int {
        for (const place of [y, y + list.spacing, y - list.spacing]) {
            const row = list.indexAt(20, list.contentY + place);
            if (row >= 0)
                return row;
        }
        return -1;
    }

    ListView {
        id: list

        Accessible.name: "アラーム"
        Accessible.role: Accessible.List
        T.ScrollBar.vertical: ScrollBar {
        }
        anchors.fill: parent
        bottomMargin: homeList.home.selection.editMode ? 60 : 12
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: 0
        clip: true
        highlightFollowsCurrentItem: false
        keyNavigationEnabled: false
        model: homeList.home.groups
        reuseItems: true
        spacing: 8
        topMargin: 4

        onVisibleChanged: if (!visible)
            focus = false

        delegate: HomeRow {
            id: row

            home: homeList.home // qmllint disable unqualified
            width: ListView.view.width

            onMenuAsked: (x, y) => homeList.menuAsked(row.groupId, row.mapToItem(homeList, x, y)) // qmllint disable unqualified
            onMove: (step, stop) => homeList.go(row.index + step, stop) // qmllint disable unqualified
        }
    }
    ScrollInput {
        id: input

        anchors.fill: parent
        flickable: list
        marginAbove: list.topMargin
        marginBelow: list.bottomMargin
        scrollsToRow: true

        onFocusItemChanged: {
            const row = rowOf(focusItem) as HomeRow;
            if (row)
                list.currentIndex = row.index;
        }
    }
}
