import QtQuick
import Pacelet

/// What carries the traffic, and how good it is.
Card {
    id: card

    required property internetLook look
    /// See `ReadingRows`.
    required property var readings

    Column {
        width: parent.width
        spacing: 14

        SectionLabel {
            text: qsTr("Connection")
        }

        Row {
            visible: card.look.link !== ""
            spacing: 10

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: card.look.linkSymbol
                color: Theme.accentLight
                size: 20
            }

            Heading {
                text: card.look.link
                font: Theme.heading
                color: Theme.text
            }
        }

        ReadingRows {
            width: parent.width
            readings: card.readings
        }
    }
}
