import QtQuick 2.15

// Loads a popup on demand from a file of this module. On close, unloads it and restores the keyboard focus.
Loader {
    id: loader

    property Item focusBefore: null

    // A menu that is opened by the keyboard has its first entry highlighted.
    function show(popup: string, inputs: var) {
        if (!item)
            focusBefore = Window.activeFocusItem;
        setSource("/qt-project.org/imports/Kova/" + popup, inputs);
        const shown = item as QtObject;
        shown.open(); // qmllint disable
        if ("currentIndex" in shown && Window.window.showsFocus) // qmllint disable
            shown.currentIndex = 0;
    }

    Connections {
        function onClosed() {
            loader.setSource("");
            const focus = loader.Window.activeFocusItem;
            if ((!focus || focus === loader.Window.contentItem) && loader.focusBefore?.visible)
                loader.focusBefore.forceActiveFocus();
        }

        target: loader.item
    }
}
