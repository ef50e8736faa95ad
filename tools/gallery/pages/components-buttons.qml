import QtQuick
import Pacelet

Rectangle {
    width: 640
    height: 300
    color: Theme.window

    Column {
        x: 34
        y: 28
        spacing: 18

        Row {
            spacing: 12

            PrimaryButton {
                text: "Get started"
            }

            SecondaryButton {
                text: "Not now"
            }

            SecondaryButton {
                symbol: "pause.fill"
                text: "Pause"
            }

            SecondaryButton {
                text: "All processes"
                symbol: "arrow.right"
                symbolBehind: true
            }
        }

        Row {
            spacing: 12

            FixButton {
                title: "Quit Google Chrome"
                symbol: "xmark.circle"
                prominent: true
                purple: true
            }

            FixButton {
                anchors.verticalCenter: parent.verticalCenter
                title: "Quit Google Chrome"
                symbol: "xmark.circle"
                purple: true
            }

            FixButton {
                title: "Spotlight settings"
                symbol: "slider.horizontal.3"
            }
        }

        Row {
            spacing: 12

            PrimaryButton {
                text: "Close 3 duplicates"
                enabled: false
            }

            SecondaryButton {
                text: "Memory Saver settings"
                symbol: "leaf"
                enabled: false
            }

            SecondaryButton {
                text: "Focused"
                Component.onCompleted: Qt.callLater(() => forceActiveFocus(Qt.TabFocusReason))
            }
        }

        FixButton {
            width: 170
            title: "Quit Quite An Unreasonably Long Name"
            symbol: "xmark.circle"
            purple: true
        }
    }
}
