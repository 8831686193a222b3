import QtQuick 2.15
import QtQuick.Templates as T
import Kova

T.MenuSeparator {
    bottomPadding: 5
    implicitHeight: 11
    implicitWidth: 140
    leftPadding: 10
    rightPadding: 10
    topPadding: 5

    contentItem: Rectangle {
        color: Palette.edge
        implicitHeight: 1
    }
}
