import QtQuick 2.15
import QtQuick.Templates as T
import Kova

T.Slider {
    id: slider

    implicitHeight: 20
    snapMode: T.Slider.SnapAlways

    background: ContinuousRectangle {
        color: Qt.alpha(Palette.textSecondary, 0.35)
        height: 4
        radius: 2
        width: slider.availableWidth
        x: slider.leftPadding
        y: Math.round((slider.height - height) / 2)

        ContinuousRectangle {
            color: Palette.accent
            height: parent.height
            radius: 2
            width: Math.round(slider.visualPosition * (slider.availableWidth - slider.handle.width) + slider.handle.width / 2)
        }
    }
    handle: ContinuousRectangle {
        borderColor: Qt.alpha("black", 0.25)
        borderWidth: 1
        color: slider.pressed ? Palette.pressedKnob : Palette.knob
        height: 16
        radius: 8
        width: 16
        x: Math.round(slider.leftPadding + slider.visualPosition * (slider.availableWidth - width))
        y: Math.round((slider.height - height) / 2)

        FocusRing {
            cornerRadius: 8
            target: slider
        }
    }

    Keys.onPressed: event => {
        const targets = {
            [Qt.Key_Home]: from,
            [Qt.Key_End]: to,
            [Qt.Key_PageUp]: value + 5 * stepSize,
            [Qt.Key_PageDown]: value - 5 * stepSize
        };
        event.accepted = event.key in targets;
        if (event.accepted) {
            value = targets[event.key];
            moved();
        }
    }
}
