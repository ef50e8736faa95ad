import QtQuick

/// The quiet heading of a card's part.
Heading {
    font.family: Theme.pill.family
    font.pointSize: Theme.pill.pointSize
    font.weight: Theme.pill.weight
    font.letterSpacing: 0.4
    font.capitalization: Font.AllUppercase
    color: Theme.text3
}
