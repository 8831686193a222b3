import QtQuick 2.15
import QtQuick.Templates as T
import Kova

T.ToolTip {
    id: toolTip

    delay: 700
    horizontalPadding: 8
    implicitHeight: Math.ceil(implicitContentHeight + topPadding + bottomPadding)
    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    margins: 6
    timeout: 10000
    verticalPadding: 4
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height + 4 : 0

    background: ContinuousRectangle {
        borderColor: Qt.alpha(Palette.textPrimary, 0.2)
        borderWidth: 1
        color: Palette.background
        radius: 6
    }
    contentItem: Text {
        objectName: "toolTip"
        color: Palette.textPrimary
        font.pixelSize: 11
        text: toolTip.text
    }
}
