import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// A built-in sound. The row chooses the sound; its button only plays it.
T.RadioButton {
    id: row

    required property AlarmEditor editor
    required property int index
    required property bool isChosen
    required property bool isCurrent
    required property string modelData

    signal madeCurrent
    // Moves the focus to the same place in another row.
    signal move(int step, bool onPlayButton)

    function choose() {
        madeCurrent();
        editor.selectBuiltInSound(modelData);
    }
    function takeFocus(onPlayButton) {
        (onPlayButton ? playButton : row).forceActiveFocus();
        if (onPlayButton)
            madeCurrent();
        else
            choose();
    }

    checked: isChosen
    Accessible.name: text
    activeFocusOnTab: isCurrent
    implicitHeight: Math.max(implicitContentHeight, playButton.implicitHeight) + 8
    text: editor.soundLabels[index]

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

    Keys.onDownPressed: move(1, false)
    Keys.onUpPressed: move(-1, false)
    onClicked: choose()

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

        Keys.onDownPressed: row.move(1, true)
        Keys.onUpPressed: row.move(-1, true)
        onClicked: row.editor.preview(row.modelData)
    }
    FocusRing {
        cornerRadius: 6
        gap: -2
        target: row
    }
}
