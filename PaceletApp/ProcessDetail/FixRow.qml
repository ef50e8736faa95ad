pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// The buttons of some fixes, in as many lines as they take.
Flow {
    id: row

    /// Roles: look.
    required property var fixes

    /// Buttons of either size stand on one line.
    readonly property real lineHeight: 34

    signal performed(string fix)

    spacing: 10

    Repeater {
        model: row.fixes

        Item {
            id: place

            required property fixLook look

            width: button.width
            height: row.lineHeight

            FixButton {
                id: button

                width: Math.min(implicitWidth, row.width)
                anchors.verticalCenter: parent.verticalCenter
                title: place.look.title
                symbol: place.look.symbol
                purple: place.look.purple
                onClicked: row.performed(place.look.fix)
            }
        }
    }
}
