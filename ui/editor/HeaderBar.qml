import QtQuick 2.15
import Kova

// The title is centred between the two buttons.
Item {
    id: header

    required property string title

    signal cancel
    signal save

    implicitHeight: Math.max(cancelButton.implicitHeight, titleText.implicitHeight)

    PlainButton {
        id: cancelButton

        anchors.verticalCenter: parent.verticalCenter
        font.pixelSize: 13
        text: "キャンセル"

        onClicked: header.cancel()
    }
    Text {
        id: titleText

        Accessible.name: text
        Accessible.role: Accessible.Heading
        anchors.verticalCenter: parent.verticalCenter
        color: Palette.textPrimary
        font.pixelSize: 15
        font.weight: Font.DemiBold
        text: header.title
        x: Math.round((cancelButton.width + saveButton.x - width) / 2)
    }
    PlainButton {
        id: saveButton

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        font.pixelSize: 13
        text: "保存"

        onClicked: header.save()
    }
}
