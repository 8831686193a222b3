import QtQuick 2.15
import Kova

Rectangle {
    color: Qt.alpha(Palette.textSecondary, 0.3)
    implicitHeight: 1
}
