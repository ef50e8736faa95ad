import QtQuick

/// A glyph in one colour, drawn for the pixels of its display.
Image {
    property string name
    property color color: Theme.text
    property real size: 16

    readonly property real deviceRatio: Screen.devicePixelRatio
    readonly property int pixels: Math.max(1, Math.round(size * deviceRatio))

    sourceSize.width: pixels
    sourceSize.height: pixels
    width: pixels / deviceRatio
    height: pixels / deviceRatio
    source: name === "" ? "" : "image://symbol/" + name + "?" + color.toString().slice(1)
    Accessible.ignored: true
}
