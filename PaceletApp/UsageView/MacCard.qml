import QtQuick

/// What the machine is.
Card {
    id: card

    /// Empty while it is not known.
    required property string line

    Item {
        width: parent.width
        height: glyph.height

        Symbol {
            id: glyph

            name: "laptopcomputer"
            color: Theme.accentLight
            size: 26
        }

        ElidedText {
            anchors.left: glyph.right
            anchors.leftMargin: 14
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: card.line
            font: Theme.bodyStrong
            color: Theme.text
        }

        Spinner {
            anchors.left: glyph.right
            anchors.leftMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            visible: card.line === ""
            size: 16
        }
    }
}
