import QtQuick 2.15

// A popup that is loaded while it is to be shown.
PopupLoader {
    id: lazyPopup

    required property var inputs
    required property bool isShown
    required property string popup

    // A popup needs the window, which adopts the content when it is complete.
    property bool isComplete: false

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

    Component.onCompleted: Qt.callLater(() => isComplete = true) // qmllint disable
    onIsCompleteChanged: syncPopup()
    onIsShownChanged: {
        if (isComplete) {
            syncPopup();
        }
    }
}
