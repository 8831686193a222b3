import QtQuick 2.15

// A popup that is read and made when it is wanted, and gone once it has disappeared: the window opens without it.
Loader {
    id: lazyPopup

    required property var inputs
    required property bool isShown
    required property string popup

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

    // Not at once: a popup needs the window, which takes the content in when it is complete.
    Component.onCompleted: Qt.callLater(follow) // qmllint disable
    onIsShownChanged: follow()

    Connections {
        function onClosed() {
            lazyPopup.setSource("");
        }

        target: lazyPopup.item
    }
}
