import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The open list of a picker, its chosen entry over the picker.
T.Popup {
    id: popup

    required property T.ComboBox picker
    readonly property int rowHeight: 24
    readonly property int rowsAbove: picker.currentIndex < 4 ? Math.max(picker.currentIndex, 0) : Math.max(4, picker.currentIndex - (picker.count - rowsShown))
    readonly property int rowsShown: Math.min(picker.count, 9)

    bottomPadding: 4
    height: rowsShown * rowHeight + 8
    margins: 4
    modal: true // the click that closes it has no other effect
    topPadding: 4
    width: picker.width + 16
    x: -14
    y: -rowsAbove * rowHeight - 4 + (picker.height - rowHeight) / 2

    T.Overlay.modal: Item {
    }
    background: PanelBackground {
        color: Palette.surface
        radius: 8
        shadowRadius: 12
    }
    contentItem: ListView {
        Accessible.name: popup.picker.Accessible.name
        Accessible.role: Accessible.List
        T.ScrollBar.vertical: ScrollBar {
        }
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        currentIndex: popup.picker.highlightedIndex
        highlightMoveDuration: 0
        implicitHeight: contentHeight
        model: popup.picker.delegateModel
        objectName: "pickerList"
    }

    // The combo box has scrolled the chosen entry to the top before.
    onOpened: (contentItem as ListView).positionViewAtIndex(Math.max(picker.currentIndex, 0) - rowsAbove, ListView.Beginning)
}
