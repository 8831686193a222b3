import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// Shows texts, of which one is chosen. The Tab key stops at the chosen one only; the arrow keys move from there. Emits
// `activated` for choices by the user.
Item {
    id: control

    required property int currentIndex
    readonly property real segmentWidth: width / texts.length
    required property var texts

    signal activated(int index)

    function move(index: int) {
        const segment = segments.itemAt(index);
        if (segment) {
            segment.forceActiveFocus();
            activated(index);
        }
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
        width: control.segmentWidth - 4
        x: 2 + control.currentIndex * control.segmentWidth
        y: 2

        Behavior on x  {
            NumberAnimation {
                duration: 120
                easing.type: Easing.OutCubic
            }
        }
    }
    Repeater {
        id: segments

        model: control.texts

        // qmllint disable unqualified
        delegate: T.RadioButton {
            id: segment

            required property int index
            required property string modelData

            Accessible.name: modelData
            activeFocusOnTab: checked
            checked: index === control.currentIndex
            font.pixelSize: 12
            height: control.height
            objectName: "segment"
            opacity: down ? Palette.pressed : 1
            width: control.segmentWidth
            x: index * width

            contentItem: Text {
                color: segment.checked ? Palette.textPrimary : Palette.textSecondary
                font: segment.font
                horizontalAlignment: Text.AlignHCenter
                text: segment.modelData
                verticalAlignment: Text.AlignVCenter
            }

            Keys.onLeftPressed: control.move(index - 1)
            Keys.onRightPressed: control.move(index + 1)
            onClicked: control.activated(index)

            FocusRing {
                target: segment
            }
        }
        // qmllint enable unqualified
    }
}
