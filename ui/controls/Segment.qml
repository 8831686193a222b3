import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The Tab key stops at the chosen segment only; the arrow keys move from there.
T.RadioButton {
    id: segment

    required property bool isChosen

    Accessible.name: text
    checked: isChosen
    activeFocusOnTab: isChosen
    font.pixelSize: 12
    height: parent.height
    opacity: down ? Palette.pressed : 1

    contentItem: Text {
        color: segment.isChosen ? Palette.textPrimary : Palette.textSecondary
        font: segment.font
        horizontalAlignment: Text.AlignHCenter
        text: segment.text
        verticalAlignment: Text.AlignVCenter
    }

    FocusRing {
        cornerRadius: 6
        target: segment
    }
}
