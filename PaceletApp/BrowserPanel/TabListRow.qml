import QtQuick
import Pacelet

/// The head of a window, or one of its tabs.
Item {
    id: row

    required property int index
    required property bool head
    required property string symbol
    required property string title
    required property string subtitle
    required property bool last
    required property bool active
    required property bool selectable
    required property bool ticked

    /// The keyboard works on this row.
    property bool current: false

    readonly property real gap: head && index > 0 ? 12 : 0

    signal selected(bool selected)

    implicitHeight: gap + (head ? 34 : 46)

    CardSlice {
        y: row.gap
        width: parent.width
        height: parent.height - row.gap
        first: row.head
        last: row.last
        fill: box.hovered ? Qt.tint(Theme.raised, Theme.rowHover) : Theme.raised
    }

    Item {
        x: 10
        y: row.gap
        width: parent.width - 20
        height: parent.height - row.gap
        visible: row.head
        Accessible.role: Accessible.Heading
        Accessible.name: row.title + " " + row.subtitle

        Symbol {
            id: glyph

            anchors.verticalCenter: parent.verticalCenter
            name: row.symbol
            color: Theme.text2
            size: 15
        }

        ElidedText {
            id: name

            x: glyph.width + 8
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(implicitWidth), parent.width - x - 5 - count.width)
            text: row.head ? row.title : ""
            font: Theme.windowName
            color: Theme.text
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }

        Text {
            id: count

            anchors.left: name.right
            anchors.leftMargin: 5
            anchors.verticalCenter: parent.verticalCenter
            text: row.head ? row.subtitle : ""
            font: Theme.windowCount
            color: Theme.text2
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }

    CheckBox {
        id: box

        anchors.fill: parent
        leftPadding: 10 + indicator.width + 12
        rightPadding: 10
        visible: !row.head
        enabled: row.selectable
        focusPolicy: Qt.NoFocus
        hoverEnabled: row.selectable
        text: row.head ? "" : row.title
        Accessible.description: row.active ? qsTr("%1, Active").arg(row.subtitle) : row.subtitle
        checked: row.ticked
        opacity: 1
        indicator.x: 10
        indicator.opacity: enabled ? 1 : 0.45
        onToggled: row.selected(checked)

        contentItem: Item {
            Column {
                anchors.left: parent.left
                anchors.right: pill.visible ? pill.left : parent.right
                anchors.rightMargin: pill.visible ? 10 : 0
                anchors.verticalCenter: parent.verticalCenter
                spacing: 1

                ElidedText {
                    width: parent.width
                    text: box.text
                    font: Theme.control
                    color: row.selectable ? Theme.text : Theme.text2
                    horizontalAlignment: Text.AlignLeft
                    Accessible.ignored: true
                }

                ElidedText {
                    width: parent.width
                    text: row.head ? "" : row.subtitle
                    font: Theme.note
                    color: row.selectable ? Theme.text2 : Theme.text3
                    horizontalAlignment: Text.AlignLeft
                    Accessible.ignored: true
                }
            }

            Pill {
                id: pill

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: row.active
                text: qsTr("Active")
                fg: Theme.accentLight
                bg: Theme.accentBG
            }
        }
    }

    FocusRing {
        anchors.topMargin: row.gap + 2
        anchors.bottomMargin: 2
        anchors.leftMargin: 2
        anchors.rightMargin: 2
        visible: row.current
        around: 6
    }
}
