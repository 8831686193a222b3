import QtQuick 2.15

// Loads a popup and opens it while `isShown` is true.
PopupLoader {
    required property var inputs
    required property bool isShown
    required property string popup

    function syncPopup() {
        if (!isShown) {
            item?.close(); // qmllint disable
        } else if (item) {
            item.open(); // qmllint disable
        } else {
            show(popup, inputs);
        }
    }

    // The popup needs the window, to which the content is added after its completion.
    Component.onCompleted: Qt.callLater(syncPopup) // qmllint disable
    onIsShownChanged: if (Window.window)
        syncPopup()
}
