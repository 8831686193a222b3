import QtQuick 2.15
import QtQuick.Templates as T
import Kova

T.Switch {
    id: control

    implicitHeight: 22
    implicitWidth: 38

    indicator: ContinuousRectangle {
        color: control.checked ? Palette.accent : Qt.alpha(Palette.textSecondary, 0.4)
        height: control.height
        radius: height / 2
        width: control.width

        ContinuousRectangle {
            color: control.down ? Palette.pressedKnob : Palette.knob
            height: parent.height - 4
            radius: height / 2
            width: height
            x: 2 + control.visualPosition * (parent.width - width - 4)
            y: 2

            Behavior on x  {
                enabled: !control.down

                NumberAnimation {
                    duration: 120
                    easing.type: Easing.OutCubic
                }
            }
        }
    }

    FocusRing {
        cornerRadius: 11
        target: control
    }
}
