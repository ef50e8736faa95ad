pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// What is wrong with the connection, or that nothing is.
Card {
    id: card

    required property internetLook look
    /// Roles symbol, tone, title, detail and fix.
    required property var findings

    signal fixed(int row)

    padding: 0

    Item {
        x: 24
        width: parent.width - 48
        height: visible ? healthy.implicitHeight : 0
        visible: card.look.checking

        Spinner {
            id: spinner

            anchors.verticalCenter: parent.verticalCenter
            x: 16
            size: 24
        }

        Label {
            anchors.left: spinner.right
            anchors.leftMargin: 34
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Checking your connection…")
            font: Theme.heading
            color: Theme.text
        }
    }

    FindingRow {
        id: healthy

        x: 24
        width: parent.width - 48
        height: visible ? implicitHeight : 0
        visible: card.look.healthyNote !== ""
        large: true
        symbol: "checkmark.seal"
        tone: Tone.Green
        title: qsTr("Your internet looks healthy.")
        detail: card.look.healthyNote
    }

    Column {
        x: 24
        width: parent.width - 48

        Repeater {
            model: card.findings

            FindingRow {
                required property int index
                required fix

                width: parent?.width ?? 0
                first: index === 0
                onFixed: card.fixed(index)
            }
        }
    }
}
