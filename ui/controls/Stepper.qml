import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A label, a number, and two auto-repeating buttons that step the number. A number outside the range is shown unchanged
// and brought into the range by the user's next step.
Item {
    id: row

    required property string label
    // The user can set 1 to this.
    required property int maximum
    required property int number
    required property string text

    // Emitted when the user changes the number.
    signal step(int value)

    implicitHeight: stepper.implicitHeight

    Text {
        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textSecondary
        font.pixelSize: 13
        text: row.label
    }
    T.SpinBox {
        id: stepper

        readonly property string text: row.text // for assistive tools

        Accessible.name: row.label
        anchors.right: parent.right
        focusPolicy: Qt.StrongFocus
        font.pixelSize: 13
        from: Math.min(1, row.number)
        implicitHeight: 26
        implicitWidth: 130
        to: Math.max(row.maximum, row.number)
        // Depends on the range, which changes with the number.
        value: Math.min(Math.max(row.number, from), to)

        background: ContinuousRectangle {
            color: Palette.control
            height: stepper.height
            radius: 6
            width: 20
            x: stepper.width - width

            FocusRing {
                target: stepper
            }
        }
        down.indicator: StepperButton {
            isHovered: stepper.down.hovered
            isPressed: stepper.down.pressed
            isUsable: stepper.value > stepper.from
            symbol: "chevron.down"
            x: stepper.width - width
            y: stepper.height - height
        }
        up.indicator: StepperButton {
            isHovered: stepper.up.hovered
            isPressed: stepper.up.pressed
            isUsable: stepper.value < stepper.to
            symbol: "chevron.up"
            x: stepper.width - width
        }

        Keys.onPressed: event => {
            const targets = {
                [Qt.Key_Home]: 1,
                [Qt.Key_End]: row.maximum,
                [Qt.Key_PageUp]: value + 5,
                [Qt.Key_PageDown]: value - 5
            };
            event.accepted = event.key in targets;
            if (event.accepted)
                row.step(Math.min(Math.max(targets[event.key], 1), row.maximum));
        }
        onValueModified: row.step(value)

        // Not the content item, which the Tab key would stop at.
        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: Palette.textPrimary
            font: stepper.font
            text: stepper.text
            x: stepper.width - 28 - width
        }
    }
}
