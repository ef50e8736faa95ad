import QtQuick
import Pacelet

/// One further cause.
Item {
    id: row

    required property string headline
    /// High or critical.
    required property bool grave
    required property fixLook fix
    required property string note

    signal fixed

    implicitHeight: 52

    Box {
        id: dot

        anchors.verticalCenter: parent.verticalCenter
        width: 6
        height: 6
        radius: 3
        fill: row.grave ? Theme.red : Theme.amber
    }

    ElidedText {
        anchors.left: dot.right
        anchors.leftMargin: 12
        anchors.right: end.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        text: row.headline
        font: Theme.control
        color: Theme.text
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter

        FixButton {
            id: button

            // The cause comes first; a long name is cut in the button.
            width: Math.min(implicitWidth, row.width * 0.45)
            title: row.fix.title
            symbol: row.fix.symbol
            purple: row.fix.purple
            onClicked: row.fixed()
        }

        Pill {
            width: Math.min(implicitWidth, row.width * 0.45)
            visible: !button.visible && row.note !== ""
            text: row.note
        }
    }
}
