import QtQuick 2.15

// A popup that is there while it is to be shown.
PopupLoader {
    id: lazyPopup

    required property var inputs
    required property bool isShown
    required property string popup

    // A popup needs the window, which takes the content in when it is complete.
    property bool isComplete: false

    function follow() {
        const shown = lazyPopup.item;
        if (isShown && shown) {
            shown.open(); // qmllint disable
        } else if (isShown) {
            show(popup, inputs, Window.activeFocusItem?.visualFocus ?? false); // qmllint disable
        } else if (shown) {
            shown.close(); // qmllint disable
        }
    }

    Component.onCompleted: Qt.callLater(() => isComplete = true) // qmllint disable
    onIsCompleteChanged: follow()
    onIsShownChanged: {
        if (isComplete) {
            follow();
        }
    }
}
