import QtQuick 2.15
import Kova

// Shown while sleep is prevented.
Symbol {
    id: mark

    readonly property string explanation: "スリープ防止中"

    Accessible.name: explanation
    Accessible.role: Accessible.StaticText
    color: Qt.alpha(Palette.accent, 0.6)
    name: "bolt.fill"
    size: 10

    HoverHandler {
        id: pointer
    }
    HoverTip {
        shown: pointer.hovered
        text: mark.explanation
    }
}
