import QtQuick 2.15
import QtQuick.Templates as T
import Kova

// The tooltip of its parent, created when the pointer enters and deleted when it leaves.
Loader {
    id: tip

    required property bool shown
    required property string text

    active: shown && text !== ""

    // qmllint disable unqualified
    sourceComponent: T.ToolTip {
        delay: 700
        horizontalPadding: 8
        implicitHeight: Math.ceil(implicitContentHeight + topPadding + bottomPadding)
        implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
        margins: 6
        parent: tip.parent
        text: tip.text
        timeout: 10000
        verticalPadding: 4
        visible: true
        x: Math.round((tip.parent.width - width) / 2)
        y: tip.parent.height + 4

        background: ContinuousRectangle {
            borderColor: Qt.alpha(Palette.textPrimary, 0.2)
            borderWidth: 1
            color: Palette.background
            radius: 6
        }
        contentItem: Text {
            color: Palette.textPrimary
            font.pixelSize: 11
            objectName: "toolTip"
            text: tip.text
        }
    }
    // qmllint enable unqualified
}
