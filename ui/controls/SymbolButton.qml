import QtQuick 2.15
import Kova

PlainButton {
    id: button

    required property string symbol
    property real symbolSize: 11

    contentItem: Symbol {
        color: button.color
        name: button.symbol
        size: button.symbolSize
    }
}
