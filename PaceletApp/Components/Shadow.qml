pragma ComponentBehavior: Bound
import QtQuick

/// A soft shadow under a floating surface: a few faint outlines, one around the other.
Item {
    id: shadow

    property real radius: 12
    property int spread: 12

    anchors.fill: parent
    z: -2

    Repeater {
        model: 6

        Rectangle {
            required property int index

            readonly property real grow: shadow.spread * (index + 1) / 6

            x: -grow
            y: -grow + shadow.spread / 3
            width: shadow.width + 2 * grow
            height: shadow.height + 2 * grow
            radius: shadow.radius + grow
            color: Qt.rgba(0, 0, 0, 0.09)
        }
    }
}
