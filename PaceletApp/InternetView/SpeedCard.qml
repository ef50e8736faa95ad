import QtQuick
import Pacelet

/// The last speed test, and the way to a new one.
Card {
    id: card

    required property internetLook look
    /// See `ReadingRows`.
    required property var readings

    signal asked

    Column {
        width: parent.width
        spacing: 14

        SectionLabel {
            text: qsTr("Speed test")
        }

        Row {
            visible: card.look.testing
            spacing: 10

            Spinner {
                anchors.verticalCenter: parent.verticalCenter
            }

            Label {
                text: qsTr("Testing your connection…")
                font: Theme.body
                color: Theme.text
            }
        }

        ReadingRows {
            width: parent.width
            visible: !card.look.testing
            readings: card.readings
        }

        ElidedText {
            width: parent.width
            visible: !card.look.testing
            text: card.look.speedNote
            font: Theme.rowSubtitle
            color: Theme.text2
        }

        Label {
            width: parent.width
            visible: text !== ""
            text: card.look.testError
            font: Theme.rowSubtitle
            color: Theme.red
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
        }

        SecondaryButton {
            objectName: "run speed test"
            text: qsTr("Run speed test")
            symbol: "speedometer"
            enabled: !card.look.testing
            onClicked: card.asked()
        }
    }
}
