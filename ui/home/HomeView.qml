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
        id: headerBar

        height: 48
        objectName: "headerBar"
        width: parent.width

        Item {
            id: header

            height: 28

            anchors {
                left: parent.left
                leftMargin: 16
                right: parent.right
                rightMargin: 16
                verticalCenter: parent.verticalCenter
            }
            Row {
                anchors.verticalCenter: parent.verticalCenter
                spacing: 8

                Text {
                    id: title

                    Accessible.name: text
                    Accessible.role: Accessible.Heading
                    anchors.verticalCenter: parent.verticalCenter
                    color: Palette.accent
                    font.bold: true
                    font.pixelSize: 20
                    objectName: "title"
                    text: "KOVA"
                }
                SleepMark {
                    anchors.verticalCenter: parent.verticalCenter
                    objectName: "sleepMark"
                    visible: homeView.home.isPreventingSleep
                }
            }
            Row {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 8

                PlainButton {
                    anchors.verticalCenter: parent.verticalCenter
                    font.pixelSize: 13
                    objectName: "editButton"
                    text: homeView.selection.editModeText

                    onClicked: homeView.selection.toggleEditMode()
                }
                SymbolButton {
                    color: Palette.textOnAccent
                    cornerRadius: 8
                    font.weight: Font.DemiBold
                    height: 28
                    objectName: "addButton"
                    symbol: "plus"
                    symbolSize: 14
                    toolTip: "アラーム追加"
                    visible: !homeView.selection.editMode
                    width: 28

                    background: ContinuousRectangle {
                        color: Palette.accent
                        radius: 8
                    }

                    onClicked: homeView.home.add()
                }
            }
        }
    }
    // Created on demand: its fonts are needed nowhere else at the start.
    Loader {
        active: list.count === 0
        anchors.centerIn: list

        sourceComponent: Column {
            objectName: "emptyState"
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

        home: homeView.home
        objectName: "list"
        visible: count > 0

        onMenuAsked: (groupId, place) => menu.show("home/CardMenu.qml", {
                    "groupId": groupId,
                    "home": homeView.home,
                    "x": place.x + list.x,
                    "y": place.y + list.y
                })

        anchors {
            bottom: parent.bottom
            left: parent.left
            right: parent.right
            top: headerBar.bottom
        }
    }
    Loader {
        active: homeView.selection.editMode
        anchors.bottom: parent.bottom
        width: parent.width

        sourceComponent: EditBar {
            objectName: "editBar"
            selection: homeView.selection // qmllint disable unqualified
        }
    }
    PopupLoader {
        id: menu
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

        onTriggered: preloader.setSource("/qt-project.org/imports/Kova/alert/AlarmSheet.qml", {
                "alarm": homeView.home.alert,
                "home": homeView.home
            })
    }

    // A new alarm clears the previous one first, so each has a sheet of its own.
    LazyPopup {
        inputs: ({
                "alarm": homeView.home.alert,
                "home": homeView.home
            })
        isShown: homeView.home.isRinging
        popup: "alert/AlarmSheet.qml"
    }
}
