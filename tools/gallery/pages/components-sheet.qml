import QtQuick
import Pacelet

Rectangle {
    width: 760
    height: 520
    color: Theme.window

    Sheet {
        visible: true
        padding: 32

        Column {
            width: 456
            spacing: 18

            LogoTile {
                size: 52
            }

            Text {
                text: "Find out why your Mac is slow"
                font: Theme.heading
                color: Theme.text
            }

            Row {
                spacing: 10

                Symbol {
                    name: "text.magnifyingglass"
                    color: Theme.accentLight
                    size: 18
                }

                Text {
                    text: "See the cause in plain English."
                    font: Theme.body
                    color: Theme.text
                }
            }

            CheckBox {
                text: "Start Pacelet at login"
            }

            PrimaryButton {
                text: "Get started"
            }
        }
    }
}
