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

    PanelBackground {
        anchors.fill: parent
        borderColor: "transparent"
        color: Palette.background
        radius: 16
    }
    Flickable {
        id: flickable

        T.ScrollBar.vertical: ScrollBar {
            verticalPadding: 10 // clear of the corners
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
            SectionCard {
                id: volumeSection

                title: "音量"

                Row {
                    spacing: 8
                    width: parent.width

                    Symbol {
                        id: quiet

                        anchors.verticalCenter: parent.verticalCenter
                        color: Palette.textSecondary
                        name: "speaker.fill"
                        size: 11
                    }
                    Slider {
                        Accessible.name: volumeSection.title
                        stepSize: view.editor.volumeStep
                        value: view.editor.group.volume
                        width: parent.width - quiet.width - loud.width - percent.width - 24

                        onMoved: view.editor.group.volume = value
                    }
                    Symbol {
                        id: loud

                        anchors.verticalCenter: parent.verticalCenter
                        color: Palette.textSecondary
                        name: "speaker.wave.3.fill"
                        size: 11
                    }
                    PercentText {
                        id: percent

                        text: view.editor.group.volumeText
                    }
                }
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
