import QtQuick 2.15
import Kova

// A button without a bezel that shows a symbol.
PlainButton {
    id: button

    required property string symbol
    property real symbolSize: 11

    Accessible.name: toolTip
    font.pixelSize: symbolSize
    marksHover: true

    contentItem: Symbol {
        color: button.color
        name: button.symbol
        size: button.symbolSize
    }
}
