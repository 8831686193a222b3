import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A pop-up list of texts that opens with the chosen one over the picker. Typed digits choose the entry with that
// number. Emits `activated` for choices by the user.
T.ComboBox {
    id: picker

    // The digits typed within the last second.
    property string typed

    function choose(digit) {
        for (const text of [typed + digit, digit]) {
            const found = Math.max(find(text), find("0" + text));
            if (found >= 0) {
                typed = text;
                typing.restart();
                popup.close();
                activated(found);
                return;
            }
        }
    }

    font.pixelSize: 13
    implicitHeight: 26
    implicitWidth: 70
    leftPadding: 10
    rightPadding: 20

    background: ContinuousRectangle {
        color: picker.down ? Qt.alpha(Palette.textPrimary, 0.18) : picker.hovered ? Palette.hovered : Palette.control
        radius: 6

        FocusRing {
            target: picker
        }
    }
    contentItem: Text {
        color: Palette.textPrimary
        font: picker.font
        text: picker.displayText
        verticalAlignment: Text.AlignVCenter
    }
    // qmllint disable unqualified
    delegate: T.ItemDelegate {
        id: item

        readonly property color color: highlighted ? Palette.textOnAccent : Palette.textPrimary
        required property int index
        readonly property bool isChosen: index === picker.currentIndex
        required property string modelData

        Accessible.name: text
        Accessible.selectable: true
        Accessible.selected: isChosen
        font.pixelSize: 13
        height: 24
        highlighted: ListView.isCurrentItem
        leftPadding: 24
        objectName: "pickerItem"
        text: modelData
        width: ListView.view ? ListView.view.width : 0

        background: ContinuousRectangle {
            anchors.fill: parent
            anchors.leftMargin: 4
            anchors.rightMargin: 12
            color: item.highlighted ? Palette.accent : "transparent"
            radius: 5
        }
        contentItem: Text {
            color: item.color
            font: item.font
            text: item.text
            verticalAlignment: Text.AlignVCenter
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: item.color
            name: "checkmark"
            size: 9
            visible: item.isChosen
            x: 9
        }
    }
    // qmllint enable unqualified
    indicator: Symbol {
        color: Palette.textSecondary
        name: "chevron.up.chevron.down"
        size: 10
        x: picker.width - width - 6
        y: Math.round((picker.height - height) / 2)
    }
    // Created when it is first shown, which an id in it would prevent.
    popup: T.Popup {
        readonly property int rowHeight: 24
        readonly property int rowsAbove: picker.currentIndex < 4 ? Math.max(picker.currentIndex, 0) : Math.max(4, picker.currentIndex - (picker.count - rowsShown))
        readonly property int rowsShown: Math.min(picker.count, 9)

        height: rowsShown * rowHeight + 8
        margins: 4
        modal: true // the click that closes it has no other effect
        verticalPadding: 4
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
            Accessible.name: picker.Accessible.name
            Accessible.role: Accessible.List
            T.ScrollBar.vertical: ScrollBar {
            }
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            currentIndex: picker.highlightedIndex
            highlightMoveDuration: 0
            implicitHeight: contentHeight
            model: picker.delegateModel
            objectName: "pickerList"
        }

        // The combo box has scrolled the chosen entry to the top before.
        onOpened: (contentItem as ListView).positionViewAtIndex(Math.max(picker.currentIndex, 0) - rowsAbove, ListView.Beginning)
    }

    Keys.onPressed: event => {
        event.accepted = /^[0-9]$/.test(event.text);
        if (event.accepted)
            choose(event.text);
    }

    Timer {
        id: typing

        interval: 1000

        onTriggered: picker.typed = ""
    }
}
