import QtQuick 2.15
import Kova

// The screen on which a group is created or changed. Saving and closing are left to the presenter.
Item {
    id: view

    // Of the background, in pixels.
    property real cornerRadius: 0
    required property AlarmEditor editor
    readonly property string title: editor.isNew ? "新規アラーム" : "アラーム編集"
    readonly property bool isOnScreen: visible && Window.visibility !== Window.Hidden

    signal cancel
    signal save

    implicitHeight: 550
    implicitWidth: 400

    Component.onDestruction: editor.leave()
    onIsOnScreenChanged: if (!isOnScreen)
        editor.leave()

    ContinuousRectangle {
        anchors.fill: parent
        color: Palette.background
        radius: view.cornerRadius
    }
    ScrollArea {
        anchors.fill: parent
        barInset: view.cornerRadius / 2
        contentHeight: column.implicitHeight + 40

        Column {
            id: column

            spacing: 20
            width: parent.width - 40
            x: 20
            y: 20

            HeaderBar {
                title: view.title
                width: parent.width

                onCancel: view.cancel()
                onSave: view.save()
            }
            SectionCard {
                isStretched: false
                title: "目標時刻"

                TargetTimeSection {
                    editor: view.editor
                }
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
            SectionCard {
                title: "アラーム回数"

                CountSection {
                    editor: view.editor
                    width: parent.width
                }
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
                title: "音量"

                VolumeSection {
                    editor: view.editor
                    width: parent.width
                }
            }
            SectionCard {
                title: "テキスト読み上げ (TTS)"

                SpeechSection {
                    editor: view.editor
                    width: parent.width
                }
            }
        }
    }
}
