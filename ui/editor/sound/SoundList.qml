import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The built-in sounds. A row chooses its sound; its button only plays it. Tab stops at the current row and its button; the
// up and down keys move to other rows.
Column {
    id: list

    readonly property int chosenRow: editor.soundIds.indexOf(editor.group.chosenSound) // qmllint disable
    property int currentRow: 0
    required property AlarmEditor editor

    function choose(row: int) {
        currentRow = row;
        editor.selectBuiltInSound(editor.soundIds[row]);
    }
    function moveTo(row: int) {
        if (row >= 0 && row < repeater.count) {
            repeater.itemAt(row).forceActiveFocus();
            choose(row);
        }
    }
    function moveToPlayButton(row: int) {
        if (row >= 0 && row < repeater.count) {
            repeater.itemAt(row).playButton.forceActiveFocus(); // qmllint disable
            currentRow = row;
        }
    }

    spacing: 2

    onChosenRowChanged: if (chosenRow >= 0)
        currentRow = chosenRow

    Repeater {
        id: repeater

        model: list.editor.soundIds

        // qmllint disable unqualified
        delegate: T.RadioButton {
            id: row

            required property int index
            readonly property bool isCurrent: list.currentRow === index
            required property string modelData
            readonly property Item playButton: button

            Accessible.name: text
            activeFocusOnTab: isCurrent
            checked: list.chosenRow === index
            implicitHeight: Math.max(implicitContentHeight, button.implicitHeight) + 8
            objectName: "soundRow"
            text: list.editor.soundLabels[index]
            width: list.width

            background: ContinuousRectangle {
                color: row.checked ? Qt.alpha(Palette.accent, 0.1) : row.hovered ? Qt.alpha(Palette.textPrimary, 0.04) : "transparent"
                radius: 6
            }
            contentItem: Row {
                leftPadding: 8
                spacing: 8

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    color: row.checked ? Palette.accent : Palette.textSecondary
                    name: row.checked ? "largecircle.fill.circle" : "circle"
                    size: 14
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    color: Palette.textPrimary
                    font.pixelSize: 13
                    text: row.text
                }
            }

            Keys.onDownPressed: list.moveTo(index + 1)
            Keys.onUpPressed: list.moveTo(index - 1)
            onClicked: list.choose(index)

            SymbolButton {
                id: button

                Accessible.name: row.text + " 試聴"
                activeFocusOnTab: row.isCurrent
                anchors.verticalCenter: parent.verticalCenter
                color: hovered ? Palette.textPrimary : Palette.textSecondary
                cornerRadius: width / 2
                symbol: "play.circle"
                symbolSize: 14
                x: row.width - width - 8

                Keys.onDownPressed: list.moveToPlayButton(row.index + 1)
                Keys.onUpPressed: list.moveToPlayButton(row.index - 1)
                onClicked: list.editor.preview(row.modelData)
            }
            FocusRing {
                gap: -2
                target: row
            }
        }
        // qmllint enable unqualified
    }
}
