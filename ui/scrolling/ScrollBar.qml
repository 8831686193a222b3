import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// Shown whenever the content exceeds the viewport.
T.ScrollBar {
    id: bar

    // Assistive tools reach all of the content without it.
    Accessible.ignored: true
    implicitWidth: 10
    minimumSize: 0.08
    padding: 2
    policy: size < 1 ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
    visible: policy === T.ScrollBar.AlwaysOn

    contentItem: ContinuousRectangle {
        color: Qt.alpha(Palette.textPrimary, bar.pressed ? 0.45 : bar.hovered ? 0.35 : 0.22)
        radius: 3
    }
}
