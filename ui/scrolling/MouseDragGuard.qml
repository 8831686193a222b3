import QtQuick 2.15

// Lies over a flickable and keeps the mouse from dragging its content: the mouse scrolls by the wheel and the scroll
// bar, a finger drags.
Item {
    id: guard

    required property Flickable flickable

    Binding {
        property: "interactive"
        target: guard.flickable
        value: !mouse.active
    }
    PointHandler {
        id: mouse

        acceptedDevices: PointerDevice.Mouse
    }
}
