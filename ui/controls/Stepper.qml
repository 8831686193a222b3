import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A label and two auto-repeating buttons that step a number. A number outside the range is shown unchanged and brought
// into the range by the user's next step. Emits `valueModified` for changes by the user.
T.SpinBox {
    id: stepper

    // The user can set 1 to this.
    required property int maximum
    required property int number
    required property string text

    function moveTo(target: int) {
        value = Math.min(Math.max(target, 1), maximum);
        valueModified();
    }

    focusPolicy: Qt.StrongFocus
    from: Math.min(1, number)
    implicitHeight: 26
    implicitWidth: 130
    opacity: enabled ? 1 : Palette.disabled
    to: Math.max(maximum, number)
    // Depends on the range, which changes with the number.
    value: Math.min(Math.max(number, from), to)

    background: ContinuousRectangle {
        color: Palette.control
        height: stepper.height
        radius: 6
        width: 20
        x: stepper.width - width

        FocusRing {
            cornerRadius: 6
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
            [Qt.Key_End]: maximum,
            [Qt.Key_PageUp]: value + 5,
            [Qt.Key_PageDown]: value - 5
        };
        event.accepted = event.key in targets;
        if (event.accepted)
            moveTo(targets[event.key]);
    }

    // Not the content item, which the Tab key would stop at.
    Text {
        anchors.right: parent.right
        anchors.rightMargin: 28
        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textPrimary
        font: stepper.font
        text: stepper.text
    }
}
