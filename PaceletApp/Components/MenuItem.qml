import QtQuick
import QtQuick.Templates as T

/// One line of a menu, with the keys that do the same.
T.MenuItem {
    id: item

    /// As text; empty for none.
    property string shortcutText
    /// A divider stands before it.
    property bool startsGroup: false

    readonly property real above: startsGroup ? 11 : 0

    implicitWidth: 236
    implicitHeight: 30 + above
    topPadding: above
    leftPadding: 10
    rightPadding: 10
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Accessible.description: shortcutText
    Keys.onReturnPressed: item.clicked()
    Keys.onEnterPressed: item.clicked()

    contentItem: Item {
        ElidedText {
            anchors.left: parent.left
            anchors.right: keys.left
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            text: item.text
            font: Theme.control
            color: Theme.text
            Accessible.ignored: true
        }

        Text {
            id: keys

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: item.shortcutText
            font: Theme.note
            color: item.highlighted ? Theme.purpleText : Theme.text3
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }

    background: Item {
        Divider {
            x: 4
            y: 5
            width: parent.width - 8
            visible: item.startsGroup
            fill: Theme.controlBorder
        }

        Box {
            y: item.above
            width: parent.width
            height: parent.height - y
            radius: 8
            fill: item.highlighted && item.enabled ? Theme.accentBG : "transparent"
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
