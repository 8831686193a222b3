import QtQuick 2.15
import Kova

// A label on the left and its stepper on the right.
Item {
    id: row

    required property string label
    required property int maximum
    required property string text
    required property int number

    signal step(int value)

    implicitHeight: stepper.implicitHeight

    Text {
        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textSecondary
        font.pixelSize: 13
        text: row.label
    }
    Stepper {
        id: stepper

        Accessible.name: row.label
        anchors.right: parent.right
        font.pixelSize: 13
        maximum: row.maximum
        number: row.number
        text: row.text
        width: 130

        onValueModified: row.step(value)
    }
}
