import QtQuick 2.15
import Kova

// Shows two texts, of which one is chosen. Emits `activated` for choices by the user.
Item {
    id: control

    required property int currentIndex
    required property string first
    required property string second

    signal activated(int index)

    function move(index) {
        (index === 0 ? firstSegment : secondSegment).forceActiveFocus();
        activated(index);
    }

    Accessible.role: Accessible.Grouping
    implicitHeight: 24
    implicitWidth: 140

    ContinuousRectangle {
        anchors.fill: parent
        color: Palette.control
        radius: 6
    }
    ContinuousRectangle {
        color: Qt.alpha(Palette.textPrimary, 0.28)
        height: parent.height - 4
        radius: 5
        width: parent.width / 2 - 4
        x: 2 + control.currentIndex * parent.width / 2
        y: 2

        Behavior on x  {
            NumberAnimation {
                duration: 120
                easing.type: Easing.OutCubic
            }
        }
    }
    Segment {
        id: firstSegment

        isChosen: control.currentIndex === 0
        text: control.first
        width: parent.width / 2

        Keys.onRightPressed: control.move(1)
        onClicked: control.activated(0)
    }
    Segment {
        id: secondSegment

        isChosen: control.currentIndex === 1
        text: control.second
        width: parent.width / 2
        x: parent.width / 2

        Keys.onLeftPressed: control.move(0)
        onClicked: control.activated(1)
    }
}
