import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The entries of an open picker; the current one is highlighted.
ListView {
    required property int chosenIndex

    Accessible.role: Accessible.List
    T.ScrollBar.vertical: ScrollBar {
    }
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    highlightMoveDuration: 0
    implicitHeight: contentHeight
    objectName: "pickerList"
}
