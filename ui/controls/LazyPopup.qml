import QtQuick 2.15

// A popup that is read and made when it is wanted, and gone once it has disappeared: the window opens without it.
Loader {
    id: lazyPopup

    required property var inputs
    required property bool isShown
    required property string popup

    // A popup needs the window, which takes the content in when it is complete.
    property bool isComplete: false

    function follow() {
        if (isShown && item) {
            item.open(); // qmllint disable
        } else if (isShown) {
            setSource(popup, inputs);
            item.open();
        } else if (item) {
            item.close();
        }
    }

    Component.onCompleted: Qt.callLater(() => isComplete = true) // qmllint disable
    onIsCompleteChanged: follow()
    onIsShownChanged: {
        if (isComplete) {
            follow();
        }
    }

    Connections {
        function onClosed() {
            lazyPopup.setSource("");
        }

        target: lazyPopup.item
    }
}
