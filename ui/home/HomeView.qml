import QtQuick 2.15
import Kova

// The list of groups with its header, its edit mode, and the popups in front of it.
FocusScope {
    id: homeView

    required property HomeScreen home

    readonly property HomeEditMode selection: home.selection

    Keys.onPressed: event => event.accepted = list.scroll(event.key)

    Rectangle {
        anchors.fill: parent
        color: Palette.background
    }
    Item {
        id: header

        height: 48
        width: parent.width

        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8
            x: 16

            Text {
                Accessible.name: text
                Accessible.role: Accessible.Heading
                anchors.verticalCenter: parent.verticalCenter
                color: Palette.accent
                font.bold: true
                font.pixelSize: 20
                text: "KOVA"
            }
            Symbol {
                id: sleepMark

                Accessible.name: "スリープ防止中"
                Accessible.role: Accessible.StaticText
                anchors.verticalCenter: parent.verticalCenter
                color: Qt.alpha(Palette.accent, 0.6)
                name: "bolt.fill"
                size: 10
                visible: homeView.home.isPreventingSleep

                HoverHandler {
                    id: pointer
                }
                HoverTip {
                    shown: pointer.hovered
                    text: sleepMark.Accessible.name
                }
            }
        }
        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8
            x: parent.width - width - 16

            PlainButton {
                anchors.verticalCenter: parent.verticalCenter
                font.pixelSize: 13
                objectName: "editButton"
                text: homeView.selection.editMode ? "完了" : "編集"

                onClicked: homeView.selection.toggleEditMode()
            }
            SymbolButton {
                color: Palette.textOnAccent
                cornerRadius: 8
                fill: Palette.accent
                height: 28
                objectName: "addButton"
                symbol: "plus"
                symbolSize: 14
                toolTip: "アラーム追加"
                visible: !homeView.selection.editMode
                width: 28

                onClicked: homeView.home.add()
            }
        }
    }
    // Created on demand: its fonts are needed nowhere else at the start.
    Loader {
        active: list.count === 0
        anchors.centerIn: list

        sourceComponent: Column {
            spacing: 6

            Text {
                Accessible.name: text
                anchors.horizontalCenter: parent.horizontalCenter
                color: Palette.textSecondary
                font.pixelSize: 14
                text: "アラームがありません"
            }
            Text {
                Accessible.name: text
                anchors.horizontalCenter: parent.horizontalCenter
                color: Palette.textSecondary
                font.pixelSize: 12
                text: "＋ボタンで追加"
            }
        }
    }
    HomeList {
        id: list

        height: parent.height - y
        home: homeView.home
        visible: count > 0
        width: parent.width
        y: header.height
    }
    Loader {
        active: homeView.selection.editMode
        anchors.bottom: parent.bottom
        width: parent.width

        sourceComponent: EditBar {
            selection: homeView.selection // qmllint disable unqualified
        }
    }
    LazyPopup {
        inputs: ({
                "selection": homeView.selection
            })
        isShown: homeView.selection.showDeleteConfirm
        popup: "home/DeleteConfirmation.qml"
    }

    // Creates an alert once after the start: loading its types, fonts and images would delay the first one.
    Loader {
        id: preloader

        asynchronous: true

        onLoaded: setSource("")
    }
    Timer {
        interval: 1000
        running: true

        onTriggered: preloader.setSource("/qt-project.org/imports/Kova/" + alert.popup, alert.inputs)
    }

    // A new alarm clears the previous one first, so each has a sheet of its own.
    LazyPopup {
        id: alert

        inputs: ({
                "alarm": homeView.home.alert,
                "home": homeView.home
            })
        isShown: homeView.home.isRinging
        popup: "alert/AlarmAlertView.qml"
    }
}
