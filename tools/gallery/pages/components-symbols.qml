import QtQuick
import Pacelet

/// Every glyph under its name.
Rectangle {
    id: page

    width: 1000
    height: flow.height + 56
    color: Theme.window

    Grid {
        id: flow

        x: 34
        y: 28
        columns: 6
        spacing: 10

        Repeater {
            model: symbolNames

            Row {
                id: entry

                required property string modelData

                width: 146
                spacing: 8

                Symbol {
                    name: entry.modelData
                    color: Theme.text
                    size: 18
                }

                ElidedText {
                    width: 116
                    anchors.verticalCenter: parent.verticalCenter
                    text: entry.modelData
                    font: Theme.note
                    color: Theme.text2
                }
            }
        }
    }
}
