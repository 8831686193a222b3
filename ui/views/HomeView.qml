import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The list of groups with its header, its edit mode, and what stands in front of it.
Item {
    id: homeView

    required property HomeScreen home

    readonly property HomeSelection selection: home.selection

    Rectangle {
        anchors.fill: parent
        color: Palette.background
    }
    Item {
        id: headerBar

        height: header.height + 20
        objectName: "headerBar"
        width: parent.width

        Item {
            id: header

            height: Math.max(title.implicitHeight, 28)

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
                    color: "black"
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
    Column {
        anchors.centerIn: list
        objectName: "emptyState"
        spacing: 6
        visible: list.count === 0

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
    ListView {
        id: list

        Accessible.name: "アラーム"
        Accessible.role: Accessible.List
        T.ScrollBar.vertical: ScrollBar {
        }
        bottomMargin: homeView.selection.editMode ? 60 : 12
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        model: homeView.home.groups
        objectName: "list"
        reuseItems: true
        spacing: 8
        topMargin: 4
        visible: count > 0

        delegate: HomeRow {
            id: row

            home: homeView.home // qmllint disable unqualified
            width: ListView.view.width - 24
            x: 12

            onMenuAsked: (x, y) => menu.openFor(row.groupId, row.mapToItem(homeView, x, y))
        }

        anchors {
            bottom: parent.bottom
            left: parent.left
            right: parent.right
            top: headerBar.bottom
        }
    }
    MouseDragGuard {
        anchors.fill: list
        flickable: list
    }
    EditBar {
        anchors.bottom: parent.bottom
        objectName: "editBar"
        selection: homeView.selection
        visible: homeView.selection.editMode
        width: parent.width
    }
    Loader {
        id: menu

        function openFor(groupId: string, place: point) {
            active = false;
            setSource("CardMenu.qml", {
                    "groupId": groupId,
                    "home": homeView.home,
                    "x": place.x,
                    "y": place.y
                });
            active = true;
        }

        active: false
    }
    LazyPopup {
        inputs: ({
                "selection": homeView.selection
            })
        isShown: homeView.selection.showDeleteConfirm
        popup: "../views/DeleteConfirmation.qml"
    }

    // A new alarm clears the one before, so that it always gets a sheet of its own.
    LazyPopup {
        inputs: ({
                "alarm": homeView.home.alert,
                "home": homeView.home
            })
        isShown: homeView.home.isRinging
        popup: "../views/AlarmSheet.qml"
    }
}
