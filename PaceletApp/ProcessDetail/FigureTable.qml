pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// Names with one or two figures, each in a column of its own.
Column {
    id: table

    /// Roles name, first and second.
    required property var rows
    property real firstWidth: 80
    property real secondWidth: 0

    spacing: 6

    component Figure: Text {
        font: Theme.figures
        color: Theme.text2
        horizontalAlignment: Text.AlignRight
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    Repeater {
        model: table.rows

        Item {
            id: entry

            required property string name
            required property string first
            required property string second

            width: table.width
            height: label.height
            Accessible.role: Accessible.StaticText
            Accessible.name: second === "" ? name + ", " + first : name + ", " + first + ", " + second

            ElidedText {
                id: label

                width: figures.x - 16
                horizontalAlignment: Text.AlignLeft
                text: entry.name
                font: Theme.control
                color: Theme.text
                Accessible.ignored: true
            }

            Row {
                id: figures

                anchors.right: parent.right

                Figure {
                    width: table.firstWidth
                    text: entry.first
                }

                Figure {
                    width: table.secondWidth
                    visible: table.secondWidth > 0
                    text: entry.second
                }
            }
        }
    }
}
