import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A label and two buttons that step a value and repeat while they are held. A value outside the range is shown as
// it is and comes into the range at the user's step. React to `valueModified`.
T.SpinBox {
    id: stepper

    required property string text

    // The range that the user can reach.
    property int maximum: 100
    property int minimum: 0

    Accessible.description: text
    from: Math.min(minimum, value)
    implicitHeight: 26
    implicitWidth: Math.ceil(implicitContentWidth) + 28
    opacity: enabled ? 1 : 0.4
    to: Math.max(maximum, value)

    background: ContinuousRectangle {
        color: Qt.alpha(Palette.textPrimary, 0.1)
        height: stepper.height
        radius: 6
        width: 20
        x: stepper.width - width

        FocusRing {
            cornerRadius: 6
            shown: stepper.visualFocus
        }
    }
    contentItem: Text {
        color: Palette.textPrimary
        font: stepper.font
        horizontalAlignment: Text.AlignRight
        rightPadding: 28
        text: stepper.text
        verticalAlignment: Text.AlignVCenter
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
}
