import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A group in the list. The buttons and the switch handle their own clicks; a click anywhere else clicks the card. Tab stops
// at the current card only.
Item {
    id: card

    // Disables the buttons and the switch.
    required property bool isInert
    required property bool isCurrent
    required property bool isEnabled
    required property bool isPreviewing
    required property string label
    required property string repeatDaysText
    required property string sequenceText
    required property string timeText

    readonly property string title: label === "" ? timeText : timeText + " " + label

    signal click
    signal duplicate
    // Emitted when Tab is pressed at the card's last stop, or Backtab at its first.
    signal leave(var event, int step)
    signal preview
    signal toggle

    // The items in the tab chain, in order.
    readonly property var stops: isInert ? [surface] : [surface, previewButton, duplicateButton, enabledSwitch]

    implicitHeight: Math.max(texts.implicitHeight, controls.implicitHeight) + 24

    T.Button {
        id: surface

        Accessible.description: card.sequenceText === "" ? card.repeatDaysText : card.repeatDaysText + " " + card.sequenceText
        Accessible.name: card.title
        activeFocusOnTab: activeFocus || card.isCurrent
        anchors.fill: parent
        objectName: "cardSurface"

        background: ContinuousRectangle {
            color: Palette.surface
            radius: 12
        }

        Keys.onBacktabPressed: event => card.leave(event, -1)
        Keys.onTabPressed: event => card.leave(event, 1)
        onClicked: card.click()

        FocusRing {
            cornerRadius: 12
            target: surface
        }
    }
    Column {
        id: texts

        objectName: "cardTexts"
        spacing: 4

        anchors {
            left: parent.left
            leftMargin: 14
            right: controls.left
            rightMargin: 12
            verticalCenter: parent.verticalCenter
            // Centres the digits, which are 23 pixels high, rather than their line.
            verticalCenterOffset: card.label === "" ? -Math.round((time.baselineOffset - 23) / 2) : 0
        }
        Text {
            color: Palette.textSecondary
            elide: Text.ElideRight
            font.pixelSize: 11
            horizontalAlignment: Text.AlignLeft // for right-to-left texts too
            maximumLineCount: 3
            objectName: "cardLabel"
            text: card.label
            textFormat: Text.PlainText
            visible: text !== ""
            width: parent.width
            wrapMode: Text.Wrap
        }
        Text {
            id: time

            color: Palette.accent
            font.bold: true
            font.family: Fonts.rounded
            font.pixelSize: 32
            objectName: "cardTime"
            text: card.timeText
            textFormat: Text.PlainText
        }
        Row {
            objectName: "cardChips"
            spacing: 6

            InfoChip {
                text: card.repeatDaysText
            }
            InfoChip {
                text: card.sequenceText
                visible: text !== ""
            }
        }
    }
    Row {
        id: controls

        objectName: "cardControls"
        spacing: 4

        anchors {
            right: parent.right
            rightMargin: 14
            verticalCenter: parent.verticalCenter
        }
        SymbolButton {
            id: previewButton

            Accessible.ignored: card.isInert
            Accessible.name: toolTip + " " + card.title
            activeFocusOnTab: activeFocus || (card.isCurrent && !card.isInert)
            anchors.verticalCenter: parent.verticalCenter
            color: card.isPreviewing ? Palette.accent : Palette.textSecondary
            height: 26
            hoverEnabled: !card.isInert
            objectName: "previewButton"
            symbol: card.isPreviewing ? "stop.fill" : "play.fill"
            toolTip: card.isPreviewing ? "停止" : "プレビュー"
            width: 26

            onClicked: card.preview()
        }
        SymbolButton {
            id: duplicateButton

            Accessible.ignored: card.isInert
            Accessible.name: toolTip + " " + card.title
            activeFocusOnTab: activeFocus || (card.isCurrent && !card.isInert)
            anchors.verticalCenter: parent.verticalCenter
            color: Palette.textSecondary
            height: 26
            hoverEnabled: !card.isInert
            objectName: "duplicateButton"
            symbol: "doc.on.doc"
            toolTip: "複製"
            width: 26

            onClicked: card.duplicate()
        }

        // Shows the model's state only: restores the binding that a click has replaced.
        Switch {
            id: enabledSwitch

            Accessible.ignored: card.isInert
            Accessible.name: card.title
            activeFocusOnTab: activeFocus || (card.isCurrent && !card.isInert)
            anchors.verticalCenter: parent.verticalCenter
            checked: card.isEnabled
            objectName: "enabledSwitch"
            scale: 0.8

            Keys.onTabPressed: event => card.leave(event, 1)
            onToggled: {
                card.toggle();
                checked = Qt.binding(() => card.isEnabled);
            }
        }
    }
}
