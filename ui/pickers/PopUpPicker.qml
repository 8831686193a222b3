import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A pop-up list of texts that opens with the chosen one over the picker. Typed digits choose the entry with that
// number. Emits `activated` for choices by the user.
T.ComboBox {
    id: picker

    // The digits typed within the last second.
    property string typed

    function choose(digit) {
        for (const text of [typed + digit, digit]) {
            const found = Math.max(find(text), find("0" + text));
            if (found >= 0) {
                typed = text;
                typing.restart();
                popup.close();
                activated(found);
                return;
            }
        }
    }

    implicitHeight: 26
    implicitWidth: 70
    leftPadding: 10
    opacity: enabled ? 1 : Palette.disabled
    rightPadding: 20

    background: ContinuousRectangle {
        color: picker.down ? Qt.alpha(Palette.textPrimary, 0.18) : picker.hovered ? Palette.hovered : Palette.control
        radius: 6

        FocusRing {
            cornerRadius: 6
            target: picker
        }
    }
    contentItem: Text {
        color: Palette.textPrimary
        font: picker.font
        text: picker.displayText
        verticalAlignment: Text.AlignVCenter
    }
    delegate: PickerItem {
        comboBox: picker // qmllint disable
    }
    indicator: Symbol {
        color: Palette.textSecondary
        name: "chevron.up.chevron.down"
        size: 10
        x: picker.width - width - 6
        y: Math.round((picker.height - height) / 2)
    }
    popup: PickerPopup {
        picker: picker
    }

    Keys.onPressed: event => {
        event.accepted = /^[0-9]$/.test(event.text);
        if (event.accepted)
            choose(event.text);
    }

    Timer {
        id: typing

        interval: 1000

        onTriggered: picker.typed = ""
    }
}
