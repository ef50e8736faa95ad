import QtQuick
import Pacelet

Rectangle {
    width: 720
    height: 330
    color: Theme.window

    Column {
        x: 34
        y: 28
        width: parent.width - 68
        spacing: 18

        Card {
            width: parent.width

            Row {
                spacing: 14

                ProcessIcon {
                    symbol: "magnifyingglass"
                }

                Column {
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 4

                    Text {
                        text: "Spotlight is rebuilding its index."
                        font: Theme.heading
                        color: Theme.text
                    }

                    Text {
                        text: "It has kept your Mac busy for 3 hours. It usually settles by itself."
                        font: Theme.body
                        color: Theme.text2
                    }
                }
            }
        }

        Row {
            spacing: 16

            LogoTile {
                size: 34
            }

            LogoTile {
                size: 52
            }

            LogoTile {
                size: 128
            }

            Repeater {
                model: ["cpu", "thermometer.medium", "globe", "terminal", "not a name"]

                ProcessIcon {
                    required property string modelData

                    symbol: modelData
                }
            }
        }
    }
}
