import QtQuick
import Pacelet

Rectangle {
    width: 640
    height: 360
    color: Theme.window

    Column {
        x: 34
        y: 28
        width: parent.width - 68
        spacing: 18

        Item {
            width: parent.width
            height: 36

            SearchField {
                prompt: "Search processes, like mds or Chrome"
                width: 320
            }

            SegmentedControl {
                anchors.right: parent.right
                title: "Sort"
                options: ["CPU", "Memory"]
                width: 170
            }
        }

        Row {
            spacing: 8

            Chip {
                text: "All 312"
                selected: true
            }

            Chip {
                text: "Safe to quit 41"
            }

            Chip {
                text: "Review 8"
            }

            Chip {
                text: "Leave it 263"
            }
        }

        SearchField {
            width: 320
            prompt: "Search"
            text: "chrome"
        }

        Switch {
            width: parent.width
            text: "Start at login"
            checked: true
        }

        Switch {
            width: parent.width
            text: "Show status in the menu bar"
        }

        CheckBox {
            text: "Start Pacelet at login"
            checked: true
        }

        Row {
            spacing: 12

            CheckBox {
                text: "Not chosen"
            }

            CheckBox {
                text: "Not to be chosen"
                enabled: false
            }

            Spinner {}
        }
    }
}
