import QtQuick

/// A glyph on a raised tile.
Box {
    id: tile

    property real size: 34
    property string symbol
    property color symbolColor: Theme.tileSymbol

    implicitWidth: size
    implicitHeight: size
    radius: 9
    fill: Theme.raised
    outline: Theme.tileBorder

    Symbol {
        anchors.centerIn: parent
        name: tile.symbol
        color: tile.symbolColor
        size: tile.size / 2
    }
}
