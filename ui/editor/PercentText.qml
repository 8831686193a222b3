import QtQuick 2.15
import Kova

Text {
    color: Palette.textSecondary
    font.family: Fonts.monospaced
    font.pixelSize: 11
    horizontalAlignment: Text.AlignRight
    width: 35
}
