import QtQuick 2.15
import Kova

// The ringing alarm in front of everything else in the window. Only its buttons end it: a click beside it or Escape may
// be meant for something else and must not silence an alarm.
Panel {
    id: sheet

    required property alarmAlertItem alarm
    required property HomeScreen home

    color: Palette.background
    radius: 16

    // qmllint disable deferred-property-id
    contentItem: FocusScope {
        id: alertView

        // qmllint enable deferred-property-id
        Accessible.description: sheet.alarm.label === "" ? sheet.alarm.positionText : sheet.alarm.label + " " + sheet.alarm.positionText
        Accessible.name: sheet.alarm.timeText
        Accessible.role: Accessible.AlertMessage
        focus: true
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

        Column {
            id: texts

            objectName: "alertTexts"
            spacing: 20
            width: parent.width
            y: Math.round((buttons.y - 20 - height) / 2)

            Symbol {
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
                text: sheet.alarm.timeText
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                color: Palette.textPrimary
                elide: Text.ElideRight
                font.pixelSize: 18
                horizontalAlignment: Text.AlignHCenter
                maximumLineCount: 3
                objectName: "alertLabel"
                text: sheet.alarm.label
                textFormat: Text.PlainText
                visible: text !== ""
                width: Math.min(implicitWidth, alertView.width - 48)
                wrapMode: Text.Wrap
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                color: Palette.textSecondary
                font.pixelSize: 13
                text: sheet.alarm.positionText
            }
        }
        Row {
            id: buttons

            spacing: 16
            width: parent.width - 48
            x: 24
            y: parent.height - height - 24

            PlainButton {
                id: snoozeButton

                color: Palette.textPrimary
                cornerRadius: 10
                fill: Palette.surface
                font.pixelSize: 15
                font.weight: Font.Medium
                objectName: "snoozeButton"
                text: "スヌーズ"
                verticalPadding: 12
                width: (parent.width - parent.spacing) / 2

                onClicked: sheet.home.endRinging()
            }
            PlainButton {
                id: stopButton

                color: Palette.textOnAccent
                cornerRadius: 10
                fill: Palette.accent
                font.pixelSize: 15
                font.weight: Font.DemiBold
                objectName: "stopButton"
                text: "停止"
                verticalPadding: 12
                width: (parent.width - parent.spacing) / 2

                onClicked: sheet.home.endRinging()
            }
        }
    }
}
