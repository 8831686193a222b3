import QtQuick 2.15

// Loads a popup and opens it while `isShown` is true.
PopupLoader {
    id: lazyPopup

    required property var inputs
    required property bool isShown
    required property string popup

    function syncPopup() {
        const shown = lazyPopup.item;
        if (isShown && shown) {
            shown.open(); // qmllint disable
        } else if (isShown) {
            show(popup, inputs);
        } else if (shown) {
            shown.close(); // qmllint disable
        }
    }

    // The popup needs the window, to which the content is added after its completion.
    Component.onCompleted: Qt.callLater(syncPopup) // qmllint disable
    onIsShownChanged: if (Window.window)
        syncPopup()
}
