pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// The form of the settings. Escape and Ctrl+W close it.
FocusScope {
    id: view

    required property SettingsModel model

    signal closed

    readonly property real inset: 24

    /// A group of settings under its heading.
    component Section: Column {
        id: section

        required property string title
        default property alias content: fields.data

        width: form.width
        spacing: 8

        SectionLabel {
            x: 4
            text: section.title
        }

        Card {
            width: parent.width
            padding: 0

            Column {
                id: fields

                x: 16
                width: parent.width - 32
            }
        }
    }

    /// One line of a group.
    component Field: Item {
        id: field

        property bool first: false
        property string note
        default property alias content: control.data

        width: parent?.width ?? 0
        implicitHeight: lines.y + lines.height + 14

        Divider {
            width: parent.width
            visible: !field.first
        }

        Column {
            id: lines

            y: 14
            width: parent.width
            spacing: 6

            Item {
                id: control

                width: parent.width
                height: childrenRect.height
            }

            Label {
                width: parent.width - 48
                visible: text !== ""
                text: field.note
                font: Theme.note
                color: Theme.text2
                wrapMode: Text.Wrap
                lineHeight: 1.1
            }
        }
    }

    component Toggle: Switch {
        id: toggle

        required property bool value

        signal turned(bool on)

        width: parent?.width ?? 0
        checked: value
        onToggled: {
            turned(checked);
            // What was asked for may have been refused.
            checked = Qt.binding(() => toggle.value);
        }
    }

    implicitWidth: 460
    implicitHeight: form.height + 2 * inset

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: view.closed()
    }

    Column {
        id: form

        x: view.inset
        y: view.inset
        width: view.width - 2 * view.inset
        spacing: 22

        Section {
            title: qsTr("General")

            Field {
                first: true
                note: view.model.loginNote

                Toggle {
                    objectName: "startAtLogin"
                    text: qsTr("Start at login")
                    focus: true
                    value: view.model.startAtLogin
                    onTurned: on => view.model.startAtLogin = on
                }
            }

            Field {
                Toggle {
                    objectName: "showMenuBar"
                    text: qsTr("Show status in the menu bar")
                    value: view.model.showMenuBar
                    onTurned: on => view.model.showMenuBar = on
                }
            }

            Field {
                visible: view.model.offersUpdates

                Toggle {
                    objectName: "checksForUpdates"
                    text: qsTr("Check for updates automatically")
                    value: view.model.checksForUpdates
                    onTurned: on => view.model.checksForUpdates = on
                }
            }
        }

        Section {
            title: qsTr("Usage history")

            Field {
                first: true
                note: qsTr("One line a minute, kept for 30 days on this Mac. Used for upgrade advice.")

                Toggle {
                    objectName: "keepHistory"
                    text: qsTr("Keep usage history")
                    value: view.model.keepHistory
                    onTurned: on => view.model.keepHistory = on
                }
            }

            Field {
                SecondaryButton {
                    objectName: "clear"
                    text: view.model.clearTitle
                    enabled: !view.model.cleared
                    onClicked: view.model.askClear()
                }
            }
        }

        Text {
            x: 4
            width: parent.width - 8
            visible: text !== ""
            text: view.model.trouble
            font: Theme.note
            color: Theme.amber
            wrapMode: Text.Wrap
            lineHeight: 1.1
            textFormat: Text.PlainText
        }
    }

    QuestionDialog {
        question: view.model.question
    }
}
