import QtQuick 2.15

// Reads and makes a popup when it is wanted, by its file's place in this module: the window opens without it. When it
// has disappeared it is gone, and the keyboard is where it was.
Loader {
    id: loader

    property var focusBefore: null
    property int reasonBefore: Qt.OtherFocusReason

    // One that was asked for with the keyboard shows where the keyboard is.
    function show(popup: string, inputs: var, byKeyboard: bool) {
        if (!item) {
            focusBefore = Window.activeFocusItem;
            reasonBefore = focusBefore?.focusReason ?? Qt.OtherFocusReason;
        }
        setSource("/qt-project.org/imports/Kova/" + popup, inputs);
        const shown = item as QtObject;
        shown.open();
        const focused = Window.activeFocusItem;
        if (byKeyboard && "currentIndex" in shown) {
            shown.currentIndex = 0;
        } else if (byKeyboard && "focusReason" in focused) {
            focused.focusReason = Qt.TabFocusReason;
        }
    }

    Connections {
        function onClosed() {
            loader.setSource("");
            const focus = loader.Window.activeFocusItem;
            const isNowhere = !focus || focus === loader.Window.contentItem;
            if (isNowhere && loader.focusBefore?.visible) {
                loader.focusBefore.forceActiveFocus(loader.reasonBefore);
            } else if (focus && focus === loader.focusBefore && "focusReason" in focus) {
                focus.focusReason = loader.reasonBefore; // a panel behind has given it back
            }
        }

        target: loader.item
    }
}
