import QtQuick 2.15
import Kova

Rectangle {
    color: Palette.line
    implicitHeight: 1
}
