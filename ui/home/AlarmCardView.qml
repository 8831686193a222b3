import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A group in the list: its card, and in edit mode the mark that selects it. The buttons and the switch handle their own
// clicks; a click anywhere else on the card opens the editor. Tab stops at the current row only.
FocusScope {
    id: row

    required property string groupId
    required property int index
    required property HomeScreen home
    required property bool isEnabled
    required property string label
    required property string repeatDaysText
    required property string sequenceText
    required property string timeText

    readonly property bool editMode: home.selection.editMode
    readonly property bool isCurrent: ListView.isCurrentItem
    readonly property bool isPreviewing: !editMode && home.currentPreviewId === groupId
    readonly property string title: label === "" ? timeText : timeText + " " + label

    // Emitted when the context menu is requested at a position in the row.
    signal menuAsked(real x, real y)
    // Emitted when a key moves the focus to a stop of another row; stop -1 is the last one.
    signal move(int step, int stop)

    function askMenu(x: real, y: real) {
        if (!editMode)
            menuAsked(x, y);
    }
    function focusStop(stop: int) {
        const all = stops();
        all[(stop + all.length) % all.length].forceActiveFocus();
    }
    // Handles Tab and Backtab at the end of the row: the window's own tab order lacks rows that are not yet created.
    function leave(event: var, step: int) {
        const isAtEnd = stop() === (step > 0 ? stops().length - 1 : 0);
        const next = index + step;
        event.accepted = isAtEnd && next >= 0 && next < ListView.view.count;
        if (event.accepted)
            move(step, step > 0 ? 0 : -1);
    }
    // Returns the index of the stop that has the focus.
    function stop(): int {
        return Math.max(0, stops().findIndex(stop => stop.activeFocus));
    }
    // Returns the items in the tab chain, in order.
    function stops(): var {
        return mark.item ? [mark.item, surface] : [surface, previewButton, duplicateButton, enabledSwitch];
    }

    Accessible.name: title
    Accessible.role: Accessible.ListItem
    implicitHeight: Math.max(texts.implicitHeight, controls.implicitHeight) + 24

    Keys.onDownPressed: move(1, stop())
    Keys.onMenuPressed: askMenu(surface.x + 14, height - 12)
    Keys.onUpPressed: move(-1, stop())
    // A row that becomes invisible (removed or recycled) gives up the focus.
    onVisibleChanged: if (!visible)
        focus = false

    Loader {
        id: mark

        active: row.editMode
        anchors.verticalCenter: parent.verticalCenter
        width: 22
        x: 12

        sourceComponent: SelectionMark {
            Accessible.name: "選択 " + row.title // qmllint disable unqualified
            activeFocusOnTab: activeFocus || row.isCurrent // qmllint disable unqualified
            isSelected: row.home.selection.selected.contains(row.groupId) // qmllint disable unqualified

            Keys.onBacktabPressed: event => row.leave(event, -1) // qmllint disable unqualified
            onClicked: row.home.selection.toggle(row.groupId) // qmllint disable unqualified
        }
    }
    T.Button {
        id: surface

        Accessible.description: row.sequenceText === "" ? row.repeatDaysText : row.repeatDaysText + " " + row.sequenceText
        Accessible.name: row.title
        activeFocusOnTab: activeFocus || row.isCurrent
        height: row.height
        objectName: "cardSurface"
        width: row.width - x - 12
        x: row.editMode ? mark.x + mark.width + 10 : 12

        background: ContinuousRectangle {
            color: Palette.surface
            radius: 12
        }

        Keys.onBacktabPressed: event => row.leave(event, -1)
        Keys.onTabPressed: event => row.leave(event, 1)
        onClicked: row.home.click(row.groupId)

        FocusRing {
            cornerRadius: 12
            target: surface
        }
    }
    Column {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        // Centres the digits, which are 23 pixels high, rather than their line.
        anchors.verticalCenterOffset: row.label === "" ? -Math.round((time.baselineOffset - 23) / 2) : 0
        spacing: 4
        width: controls.x - 12 - x
        x: surface.x + 14

        Text {
            color: Palette.textSecondary
            elide: Text.ElideRight
            font.pixelSize: 11
            horizontalAlignment: Text.AlignLeft // for right-to-left texts too
            maximumLineCount: 3
            objectName: "cardLabel"
            text: row.label
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
            text: row.timeText
        }
        Row {
            spacing: 6

            InfoChip {
                text: row.repeatDaysText
            }
            InfoChip {
                text: row.sequenceText
                visible: text !== ""
            }
        }
    }
    Row {
        id: controls

        anchors.verticalCenter: parent.verticalCenter
        spacing: 4
        x: row.width - 12 - 14 - width

        SymbolButton {
            id: previewButton

            Accessible.ignored: row.editMode
            Accessible.name: toolTip + " " + row.title
            activeFocusOnTab: activeFocus || (row.isCurrent && !row.editMode)
            anchors.verticalCenter: parent.verticalCenter
            color: row.isPreviewing ? Palette.accent : Palette.textSecondary
            fill: hovered ? Qt.alpha(Palette.textPrimary, 0.08) : "transparent"
            height: 26
            hoverEnabled: !row.editMode
            objectName: "previewButton"
            symbol: row.isPreviewing ? "stop.fill" : "play.fill"
            toolTip: row.isPreviewing ? "停止" : "プレビュー"
            width: 26

            onClicked: row.home.preview(row.groupId)
        }
        SymbolButton {
            id: duplicateButton

            Accessible.ignored: row.editMode
            Accessible.name: toolTip + " " + row.title
            activeFocusOnTab: activeFocus || (row.isCurrent && !row.editMode)
            anchors.verticalCenter: parent.verticalCenter
            color: Palette.textSecondary
            fill: hovered ? Qt.alpha(Palette.textPrimary, 0.08) : "transparent"
            height: 26
            hoverEnabled: !row.editMode
            objectName: "duplicateButton"
            symbol: "doc.on.doc"
            toolTip: "複製"
            width: 26

            onClicked: row.home.duplicate(row.groupId)
        }

        // Shows the model's state only: restores the binding that a click has replaced.
        Switch {
            id: enabledSwitch

            Accessible.ignored: row.editMode
            Accessible.name: row.title
            activeFocusOnTab: activeFocus || (row.isCurrent && !row.editMode)
            anchors.verticalCenter: parent.verticalCenter
            checked: row.isEnabled
            objectName: "enabledSwitch"
            scale: 0.8

            Keys.onTabPressed: event => row.leave(event, 1)
            onToggled: {
                row.home.toggle(row.groupId);
                checked = Qt.binding(() => row.isEnabled);
            }
        }
    }
    TapHandler {
        acceptedButtons: Qt.RightButton

        onTapped: eventPoint => row.askMenu(eventPoint.position.x, eventPoint.position.y)
    }
}
