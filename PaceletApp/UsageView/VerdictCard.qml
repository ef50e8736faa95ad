pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// Whether a better machine would help.
Card {
    id: card

    /// False until there is an answer.
    required property bool loaded
    /// Roles symbol, tone, text and fix.
    required property var lines
    /// What the answer rests on.
    required property string note

    /// The raw value of the fix.
    signal fixed(string fix)

    Column {
        width: parent.width
        spacing: 12

        Heading {
            text: qsTr("Do you need a new Mac?")
            font: Theme.heading
            color: Theme.text
        }

        Spinner {
            visible: !card.loaded
        }

        Repeater {
            model: card.lines

            Item {
                id: line

                required property string symbol
                required property int tone
                required property string text
                required property fixLook fix

                width: parent?.width ?? 0
                height: words.height

                Item {
                    id: glyph

                    width: 20
                    height: 20

                    Symbol {
                        anchors.centerIn: parent
                        name: line.symbol
                        color: line.tone === Tone.None ? Theme.text2 : Theme.foreground(line.tone)
                        size: 16
                    }
                }

                Column {
                    id: words

                    anchors.left: glyph.right
                    anchors.leftMargin: 10
                    anchors.right: parent.right
                    spacing: 10

                    Label {
                        width: Math.min(parent.width, 760)
                        text: line.text
                        font: Theme.body
                        color: Theme.text
                        lineHeight: 1.2
                        wrapMode: Text.Wrap
                    }

                    FixButton {
                        title: line.fix.title
                        symbol: line.fix.symbol
                        purple: line.fix.purple
                        onClicked: card.fixed(line.fix.fix)
                    }
                }
            }
        }

        Label {
            width: parent.width
            visible: card.loaded
            text: card.note
            font: Theme.note
            color: Theme.text3
            wrapMode: Text.Wrap
        }
    }
}
