pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// The panel of the menu-bar item: the state of the machine, who uses it up, and what to do.
FocusScope {
    id: panel

    required property MenuBarModel model

    readonly property real inset: 16

    implicitWidth: 300
    implicitHeight: Math.ceil(column.height + 2 * inset)

    Column {
        id: column

        x: panel.inset
        y: panel.inset
        width: panel.width - 2 * panel.inset
        spacing: 12

        Item {
            width: parent.width
            height: pill.height

            StatusPill {
                id: pill

                status: panel.model.status
            }

            LiveDot {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: panel.model.liveDot.text
            }
        }

        Heading {
            width: parent.width
            text: panel.model.headline
            font: Theme.controlStrong
            color: Theme.text
            wrapMode: Text.Wrap
            lineHeight: 1.1
        }

        Divider {
            width: parent.width
        }

        Repeater {
            model: panel.model.consumers

            Item {
                id: consumer

                required property string name
                required property string cpu

                width: column.width
                height: label.height
                Accessible.role: Accessible.StaticText
                Accessible.name: name + ", " + cpu

                ElidedText {
                    id: label

                    width: parent.width - figure.width - 12
                    text: consumer.name
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    font: Theme.control
                    color: Theme.text
                    Accessible.ignored: true
                }

                Text {
                    id: figure

                    anchors.right: parent.right
                    text: consumer.cpu
                    font: Theme.figures
                    color: Theme.text2
                    textFormat: Text.PlainText
                    Accessible.ignored: true
                }
            }
        }

        FixButton {
            objectName: "fix"
            width: parent.width
            title: panel.model.fix.title
            symbol: panel.model.fix.symbol
            prominent: true
            onClicked: panel.model.runFix()
        }

        SecondaryButton {
            objectName: "open"
            width: parent.width
            text: qsTr("Open Pacelet")
            focus: true
            onClicked: panel.model.open()
        }

        Divider {
            width: parent.width
        }

        Switch {
            objectName: "startAtLogin"
            width: parent.width
            text: qsTr("Start at login")
            checked: panel.model.startAtLogin
            onToggled: {
                panel.model.startAtLogin = checked;
                // The service may have refused.
                checked = Qt.binding(() => panel.model.startAtLogin);
            }
        }

        Label {
            width: parent.width
            text: panel.model.loginNote
            font: Theme.note
            color: Theme.text3
            wrapMode: Text.Wrap
        }

        SecondaryButton {
            objectName: "quit"
            width: parent.width
            text: qsTr("Quit Pacelet")
            onClicked: panel.model.quit()
        }
    }
}
