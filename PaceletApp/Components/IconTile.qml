import QtQuick

/// A glyph on a raised tile.
Rectangle {
    id: tile

    property real size: 34
    property string symbol
    property color symbolColor: Theme.tileSymbol

    implicitWidth: size
    implicitHeight: size
    radius: 9
    color: Theme.raised
    border.color: Theme.tileBorder

    Symbol {
        anchors.centerIn: parent
        name: tile.symbol
        color: tile.symbolColor
        size: tile.size / 2
    }
}
