pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// Who uses the connection, busiest first.
Card {
    id: card

    required property internetLook look
    /// Roles name, incoming and outgoing.
    required property var apps

    component Rate: Item {
        id: rate

        required property string symbol
        required property string text

        width: 100
        height: figure.height

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: rate.symbol
            color: Theme.text3
            size: 12
        }

        Text {
            id: figure

            anchors.right: parent.right
            text: rate.text
            font: Theme.figures
            color: Theme.text
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }

    Column {
        width: parent.width
        spacing: 14

        Heading {
            text: qsTr("Apps using your connection")
            font: Theme.sectionTitle
            color: Theme.text
        }

        Spinner {
            visible: !card.look.trafficLoaded
            size: 16
        }

        Label {
            visible: card.look.trafficIdle
            text: qsTr("Nothing is using much bandwidth right now.")
            font: Theme.body
            color: Theme.text2
        }

        Column {
            width: parent.width
            spacing: 12

            Repeater {
                model: card.apps

                Item {
                    id: app

                    required property string name
                    required property string incoming
                    required property string outgoing

                    width: parent?.width ?? 0
                    height: label.height
                    Accessible.role: Accessible.Row
                    Accessible.name: app.name + qsTr(", down %1, up %2").arg(app.incoming).arg(app.outgoing)

                    ElidedText {
                        id: label

                        anchors.left: parent.left
                        anchors.right: incoming.left
                        anchors.rightMargin: 24
                        text: app.name
                        font: Theme.controlMedium
                        color: Theme.text
                        Accessible.ignored: true
                    }

                    Rate {
                        id: incoming

                        anchors.right: outgoing.left
                        anchors.rightMargin: 24
                        symbol: "arrow.down"
                        text: app.incoming
                    }

                    Rate {
                        id: outgoing

                        anchors.right: parent.right
                        symbol: "arrow.up"
                        text: app.outgoing
                    }
                }
            }
        }
    }
}
