import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The screen on which a group is created or changed.
Item {
    id: view

    required property AlarmEditor editor
    readonly property string title: editor.isNew ? "新規アラーム" : "アラーム編集"
    readonly property bool isOnScreen: visible && Window.visibility !== Window.Hidden

    implicitHeight: 550
    implicitWidth: 400

    Component.onDestruction: editor.leave()
    Keys.onPressed: event => event.accepted = input.scrollByKey(event.key)
    onIsOnScreenChanged: if (!isOnScreen)
        editor.leave()

    ContinuousRectangle {
        anchors.fill: parent
        color: Palette.background
        radius: 16
    }
    Flickable {
        id: flickable

        T.ScrollBar.vertical: ScrollBar {
            bottomPadding: 10 // clear of the corners
            topPadding: 10
        }
        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentHeight: column.implicitHeight + 40
        contentWidth: width

        Column {
            id: column

            spacing: 20
            width: parent.width - 40
            x: 20
            y: 20

            // The title is centred between the two buttons.
            Item {
                implicitHeight: Math.max(cancelButton.implicitHeight, titleText.implicitHeight)
                width: parent.width

                PlainButton {
                    id: cancelButton

                    anchors.verticalCenter: parent.verticalCenter
                    font.pixelSize: 13
                    objectName: "cancelEditButton"
                    text: "キャンセル"

                    onClicked: view.editor.cancel()
                }
                Text {
                    id: titleText

                    Accessible.name: text
                    Accessible.role: Accessible.Heading
                    anchors.verticalCenter: parent.verticalCenter
                    color: Palette.textPrimary
                    font.pixelSize: 15
                    font.weight: Font.DemiBold
                    text: view.title
                    x: Math.round((cancelButton.width + saveButton.x - width) / 2)
                }
                PlainButton {
                    id: saveButton

                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    font.pixelSize: 13
                    objectName: "saveButton"
                    text: "保存"

                    onClicked: view.editor.save()
                }
            }
            TargetTimeSection {
                editor: view.editor
            }
            SectionCard {
                title: "ラベル"

                TextField {
                    Accessible.name: "ラベル"
                    font.pixelSize: 13
                    placeholderText: "例: 朝のアラーム"
                    text: view.editor.group.label
                    width: parent.width

                    onTextEdited: view.editor.group.label = text
                }
            }
            SectionCard {
                isStretched: false
                title: "繰り返し"

                Row {
                    spacing: 6

                    Repeater {
                        model: view.editor.dayLabels

                        delegate: DayChip {
                            editor: view.editor // qmllint disable unqualified
                        }
                    }
                }
            }
            CountSection {
                editor: view.editor
            }
            SectionCard {
                title: "サウンド"

                CustomFileRow {
                    editor: view.editor
                    width: parent.width
                }
                SoundList {
                    editor: view.editor
                    width: parent.width
                }
            }
            VolumeSection {
                editor: view.editor
            }
            SpeechSection {
                editor: view.editor
            }
        }
    }
    ScrollInput {
        id: input

        anchors.fill: parent
        flickable: flickable
    }
}
