import QtQuick

/// One reading of the whole machine.
Card {
    id: tile

    required property string title
    required property string value
    property color valueColor: Theme.text
    property string caption
    required property string symbol

    padding: 20
    Accessible.role: Accessible.StaticText
    Accessible.name: title + ", " + value
    Accessible.description: caption

    Item {
        width: parent.width
        height: words.height

        Column {
            id: words

            width: parent.width
            spacing: 6

            Row {
                spacing: 8

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: tile.symbol
                    color: Theme.accentLight
                    size: 16
                }

                Text {
                    text: tile.title
                    font: Theme.controlMedium
                    color: Theme.text2
                    textFormat: Text.PlainText
                    Accessible.ignored: true
                }
            }

            ElidedText {
                width: parent.width
                text: tile.value
                font: Theme.largeFigures
                color: tile.valueColor
                Accessible.ignored: true
            }

            ElidedText {
                width: parent.width
                text: tile.caption
                font: Theme.note
                color: Theme.text3
                Accessible.ignored: true
            }
        }
    }
}
