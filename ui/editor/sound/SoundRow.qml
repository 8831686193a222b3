import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// One built-in sound: the row chooses it, its button only plays it.
T.RadioButton {
    id: row

    required property int index
    readonly property bool isChosen: list !== null && list.editor.group.chosenSound === modelData
    readonly property bool isCurrent: list !== null && list.currentRow === index
    readonly property SoundColumn list: parent as SoundColumn
    required property string modelData

    function choose() {
        list.currentRow = index;
        list.editor.selectBuiltInSound(modelData);
    }
    function followChoice() {
        if (list && isChosen)
            list.currentRow = index;
    }
    function takeFocus(toPlayButton) {
        (toPlayButton ? playButton : row).forceActiveFocus(Qt.TabFocusReason);
        if (toPlayButton)
            list.currentRow = index;
        else
            choose();
    }

    checked: isChosen
    Accessible.name: text
    activeFocusOnTab: isCurrent
    implicitHeight: Math.max(implicitContentHeight, playButton.implicitHeight) + 8
    text: list ? list.editor.soundLabels[index] : ""
    width: list ? list.width : 0

    background: ContinuousRectangle {
        color: row.isChosen ? Qt.alpha(Palette.accent, 0.1) : row.hovered ? Qt.alpha(Palette.textPrimary, 0.04) : "transparent"
        radius: 6
    }
    contentItem: Row {
        leftPadding: 8
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: row.isChosen ? Palette.accent : Palette.textSecondary
            name: row.isChosen ? "largecircle.fill.circle" : "circle"
            size: 14
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: Palette.textPrimary
            font.pixelSize: 13
            text: row.text
        }
    }

    Keys.onDownPressed: list.move(index + 1, false)
    Keys.onUpPressed: list.move(index - 1, false)
    onClicked: choose()
    onIsChosenChanged: followChoice()
    onListChanged: followChoice()

    PlainButton {
        id: playButton

        Accessible.name: row.text + " 試聴"
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        cornerRadius: width / 2
        activeFocusOnTab: row.isCurrent

        contentItem: Symbol {
            color: playButton.hovered ? Palette.textPrimary : Palette.textSecondary
            name: "play.circle"
            size: 14
        }

        Keys.onDownPressed: row.list.move(row.index + 1, true)
        Keys.onUpPressed: row.list.move(row.index - 1, true)
        onClicked: row.list.editor.preview(row.modelData)
    }
    FocusRing {
        cornerRadius: 6
        gap: -2
        shown: row.visualFocus
    }
}
