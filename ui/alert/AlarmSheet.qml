import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The ringing alarm in front of everything else in the window. Only its buttons end it: a click beside it or Escape may
// be meant for something else and must not silence an alarm.
T.Popup {
    id: sheet

    required property alarmAlertItem alarm
    required property HomeScreen home

    closePolicy: T.Popup.NoAutoClose
    focus: true
    height: implicitContentHeight
    modal: true
    padding: 0
    parent: T.Overlay.overlay
    width: implicitContentWidth
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0

    T.Overlay.modal: Rectangle {
        color: Palette.dimming
    }
    background: PanelBackground {
        color: Palette.background
        radius: 16
    }
    contentItem: AlarmAlertView {
        focus: true
        label: sheet.alarm.label
        positionText: sheet.alarm.positionText
        timeText: sheet.alarm.timeText

        onDismiss: sheet.home.endRinging()
        onSnooze: sheet.home.endRinging()
    }
}
