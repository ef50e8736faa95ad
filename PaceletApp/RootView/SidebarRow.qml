import QtQuick
import QtQuick.Templates as T

/// The way to one screen.
T.AbstractButton {
    id: row

    property string symbol
    /// How many things the screen has to show, as a text; empty for no count.
    property string count
    property bool selected: false

    implicitWidth: 188
    implicitHeight: 36
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.PageTab
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.name: count === "" ? text : text + ", " + count
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    background: Box {
        radius: 9
        fill: row.selected ? Theme.accentBG : row.down || row.hovered ? Theme.raised : "transparent"

        Behavior on fill {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        FocusRing {
            visible: row.visualFocus
        }
    }

    contentItem: Item {
        Symbol {
            id: glyph

            x: 11
            anchors.verticalCenter: parent.verticalCenter
            name: row.symbol
            color: row.selected ? Theme.accentLight : Theme.text2
            size: 16
        }

        ElidedText {
            anchors.left: glyph.right
            anchors.leftMargin: 11
            anchors.right: number.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            font: row.selected ? Theme.controlStrong : Theme.controlMedium
            color: row.selected || row.hovered ? Theme.text : Theme.text2
            Accessible.ignored: true
        }

        Text {
            id: number

            anchors.right: parent.right
            anchors.rightMargin: 11
            anchors.verticalCenter: parent.verticalCenter
            text: row.count
            font: Theme.smallFigures
            color: row.selected ? Theme.purpleText : Theme.text3
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
