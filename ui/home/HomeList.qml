import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The cards. The current row follows the focus; the Tab and the arrow keys move on from there.
Item {
    id: homeList

    readonly property int count: list.count
    required property HomeScreen home

    // Focuses the n-th stop of a row, -1 for the last one.
    function focusRow(index: int, stop: int) {
        if (index < 0 || index >= count)
            return;
        list.positionViewAtIndex(index, ListView.Contain);
        (list.itemAtIndex(index) as AlarmCardView).focusStop(stop);
        input.scrollTo(list.currentItem);
    }

    // Returns the row at a height of the viewport, or beside a gap there.
    function rowAt(y: real): int {
        for (const place of [y, y + list.spacing, y - list.spacing]) {
            const row = list.indexAt(20, list.contentY + place);
            if (row >= 0)
                return row;
        }
        return -1;
    }

    // Scrolls by a key. The focus moves along when it is in the list. Returns false for other keys.
    function scroll(key: int): bool {
        if (!input.scrollByKey(key))
            return false;
        const row = input.rowOf(Window.activeFocusItem) as AlarmCardView;
        if (row)
            focusRow(key === Qt.Key_Home || key === Qt.Key_PageUp ? rowAt(list.topMargin) : rowAt(list.height - list.bottomMargin), row.stop());
        return true;
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

        // qmllint disable unqualified
        delegate: AlarmCardView {
            home: homeList.home
            width: ListView.view.width

            onMenuAsked: (x, y) => {
                const place = mapToItem(menu, x, y);
                menu.show("home/CardMenu.qml", {
                        "groupId": groupId,
                        "home": home,
                        "x": place.x,
                        "y": place.y
                    });
            }
            onMove: (step, stop) => homeList.focusRow(index + step, stop)
        }
        // qmllint enable unqualified
    }
    ScrollInput {
        id: input

        anchors.fill: parent
        flickable: list
        marginAbove: list.topMargin
        marginBelow: list.bottomMargin
        scrollsToRow: true

        onFocusItemChanged: {
            const row = rowOf(focusItem) as AlarmCardView;
            if (row)
                list.currentIndex = row.index;
        }
    }
    PopupLoader {
        id: menu
    }
}
