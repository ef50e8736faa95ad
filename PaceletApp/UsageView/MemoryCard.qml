pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// How the memory is split right now.
Card {
    id: card

    required property memoryLook look
    /// Roles name and size; one row a part.
    required property var segments

    readonly property var colors: [Theme.accent, Theme.amber, Theme.red, Theme.memoryCached, Theme.raised]

    Item {
        width: parent.width
        height: parts.height + (state.visible ? parts.spacing + state.height : 0)

        Column {
            id: parts

            width: parent.width
            spacing: 10

            SectionLabel {
                text: qsTr("Memory right now")
            }

            ElidedText {
                width: parent.width
                visible: card.look.known
                text: card.look.headline
                font: Theme.largeFigures
                color: Theme.text
            }

            StackedBar {
                width: parent.width
                height: 26
                visible: card.look.known
                radius: 5
                shares: card.look.shares
                colors: card.colors
                Accessible.role: Accessible.Chart
                Accessible.name: card.look.accessibleName
            }

            Grid {
                id: legend

                width: parent.width
                visible: card.look.known
                columns: Math.max(1, Math.floor((width + columnSpacing) / (140 + columnSpacing)))
                columnSpacing: 6
                rowSpacing: 6

                Repeater {
                    model: card.segments

                    Item {
                        id: segment

                        required property int index
                        required property string name
                        required property string size

                        width: (legend.width - (legend.columns - 1) * legend.columnSpacing) / legend.columns
                        height: words.height

                        Box {
                            id: swatch

                            anchors.verticalCenter: parent.verticalCenter
                            width: 7
                            height: 7
                            radius: 2
                            fill: card.colors[segment.index]
                            outline: Qt.colorEqual(fill, Theme.raised) ? Theme.scrollHandle : "transparent"
                        }

                        ElidedText {
                            id: words

                            anchors.left: swatch.right
                            anchors.leftMargin: 6
                            anchors.right: parent.right
                            text: segment.name + " " + segment.size
                            font: Theme.legend
                            color: Theme.text2
                        }
                    }
                }
            }
        }

        Item {
            id: state

            // At the end of the card, which may be taller than what it holds.
            y: Math.max(parts.height + parts.spacing, card.height - 2 * card.padding - height)
            width: parent.width
            height: pressure.height
            visible: card.look.known
            Accessible.role: Accessible.StaticText
            Accessible.name: pressureLabel.text + pressure.text + ", " + swap.text

            Text {
                id: pressureLabel

                text: qsTr("Pressure: ")
                font: Theme.detail
                color: Theme.text2
                Accessible.ignored: true
            }

            Text {
                id: pressure

                anchors.left: pressureLabel.right
                text: card.look.pressure
                font: Theme.detail
                color: card.look.pressureTone === Tone.None ? Theme.text : Theme.foreground(card.look.pressureTone)
                textFormat: Text.PlainText
                Accessible.ignored: true
            }

            Text {
                id: swap

                anchors.right: parent.right
                text: card.look.swap
                font: Theme.detail
                color: Theme.text2
                textFormat: Text.PlainText
                Accessible.ignored: true
            }
        }
    }
}
