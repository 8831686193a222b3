import QtQuick 2.15
import Kova

Text {
    anchors.verticalCenter: parent.verticalCenter
    color: Palette.textSecondary
    font.family: Fonts.monospaced
    font.pixelSize: 11
    horizontalAlignment: Text.AlignRight
    width: 35
}
