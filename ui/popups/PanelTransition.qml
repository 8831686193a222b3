import QtQuick 2.15

// Fades and scales a panel that appears or disappears.
Transition {
    id: transition

    required property Item growing
    required property bool shows

    NumberAnimation {
        duration: 200
        easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
        easing.type: Easing.BezierSpline
        from: transition.shows ? 0 : 1
        property: "opacity"
        to: transition.shows ? 1 : 0
    }
    NumberAnimation {
        duration: 200
        easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
        easing.type: Easing.BezierSpline
        from: transition.shows ? 0.95 : 1
        property: "scale"
        target: transition.growing
        to: transition.shows ? 1 : 0.95
    }
}
