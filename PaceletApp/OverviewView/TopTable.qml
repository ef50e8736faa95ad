pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// The busiest few.
Column {
    id: table

    /// Roles groupId, appPath, symbol, name, subtitle, cpu, memory, verdict, fix and note.
    required property var processes

    signal allProcesses
    signal fixed(string groupId)

    spacing: 12

    Item {
        width: parent.width
        height: button.height

        Heading {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("What's using your CPU")
            font: Theme.sectionTitle
            color: Theme.text
        }

        SecondaryButton {
            id: button

            anchors.right: parent.right
            text: qsTr("All processes")
            symbol: "arrow.right"
            symbolBehind: true
            onClicked: table.allProcesses()
        }
    }

    Card {
        width: parent.width
        padding: 0

        Column {
            width: parent.width

            HoverHandler {
                id: pointer
            }

            // Under the pointer, a row that changes its place is seen to go there. Elsewhere that
            // would only cost: it happens at every other look.
            move: Transition {
                enabled: pointer.hovered && !Theme.reducedMotion

                NumberAnimation {
                    property: "y"
                    duration: Theme.quick
                    easing.type: Easing.OutCubic
                }
            }

            ProcessTableHeader {
                width: parent.width
            }

            Repeater {
                model: table.processes

                Item {
                    id: entry

                    required property string groupId
                    required property string appPath
                    required property string symbol
                    required property string name
                    required property string subtitle
                    required property string cpu
                    required property string memory
                    required property string spoken
                    required property string verdict
                    required property fixLook fix
                    required property string note

                    width: parent?.width ?? 0
                    height: row.implicitHeight

                    Divider {
                        width: parent.width
                    }

                    ProcessRow {
                        id: row

                        anchors.fill: parent
                        appPath: entry.appPath
                        symbol: entry.symbol
                        name: entry.name
                        subtitle: entry.subtitle
                        cpuText: entry.cpu
                        memoryText: entry.memory
                        spoken: entry.spoken
                        verdictValue: entry.verdict
                        fix: entry.fix
                        note: entry.note
                        onFixed: table.fixed(entry.groupId)
                    }
                }
            }
        }
    }
}
