import QtQuick 2.15
import Kova

// A ringing alarm.
FocusScope {
    id: alertView

    required property string label
    required property string positionText
    required property string timeText

    signal dismiss
    signal snooze

    Accessible.description: label === "" ? positionText : label + " " + positionText
    Accessible.name: timeText
    Accessible.role: Accessible.AlertMessage
    implicitHeight: Math.max(400, 20 + texts.height + 40 + buttons.height + 24)
    implicitWidth: 350

    Keys.onPressed: quiet.restart()

    // Keys typed for something else must not end the alarm, so the stop button gets the focus only after a second
    // without keys.
    Timer {
        id: quiet

        interval: 1000
        running: true

        onTriggered: if (alertView.activeFocus && !snoozeButton.activeFocus)
            stopButton.forceActiveFocus(Qt.OtherFocusReason)
    }

    Item {
        anchors.bottom: buttons.top
        anchors.bottomMargin: 20
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top

        Column {
            id: texts

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            objectName: "alertTexts"
            spacing: 20

            Symbol {
                id: bell

                anchors.horizontalCenter: parent.horizontalCenter
                color: Palette.accent
                name: "bell.fill"
                objectName: "alertBell"
                size: 48

                SequentialAnimation on scale  {
                    loops: Animation.Infinite

                    NumberAnimation {
                        duration: 600
                        easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
                        easing.type: Easing.BezierSpline
                        from: 1
                        to: 1.15
                    }
                    NumberAnimation {
                        duration: 600
                        easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
                        easing.type: Easing.BezierSpline
                        from: 1.15
                        to: 1
                    }
                }
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                color: Palette.accent
                font.bold: true
                font.family: Fonts.rounded
                font.pixelSize: 56
                objectName: "alertTime"
                text: alertView.timeText
                textFormat: Text.PlainText
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                color: Palette.textPrimary
                elide: Text.ElideRight
                font.pixelSize: 18
                horizontalAlignment: Text.AlignHCenter
                maximumLineCount: 3
                objectName: "alertLabel"
                text: alertView.label
                textFormat: Text.PlainText
                visible: text !== ""
                width: Math.min(implicitWidth, alertView.width - 48)
                wrapMode: Text.Wrap
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                color: Palette.textSecondary
                font.pixelSize: 13
                objectName: "alertPosition"
                text: alertView.positionText
                textFormat: Text.PlainText
            }
        }
    }
    Row {
        id: buttons

        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        anchors.left: parent.left
        anchors.leftMargin: 24
        anchors.right: parent.right
        anchors.rightMargin: 24
        spacing: 16

        FilledButton {
            id: snoozeButton

            bottomPadding: 12
            color: Palette.textPrimary
            cornerRadius: 10
            fill: Palette.surface
            font.pixelSize: 15
            font.weight: Font.Medium
            objectName: "snoozeButton"
            text: "スヌーズ"
            topPadding: 12
            width: (parent.width - parent.spacing) / 2

            onClicked: alertView.snooze()
        }
        FilledButton {
            id: stopButton

            bottomPadding: 12
            color: Palette.textOnAccent
            cornerRadius: 10
            fill: Palette.accent
            font.pixelSize: 15
            font.weight: Font.DemiBold
            objectName: "stopButton"
            text: "停止"
            topPadding: 12
            width: (parent.width - parent.spacing) / 2

            onClicked: alertView.dismiss()
        }
    }
}
