import QtQuick

/// A small label on its own ground.
Box {
    id: pill

    property string text
    property string symbol
    property color fg: Theme.text2
    property color bg: Theme.raised

    readonly property real besideLabel: 16 + (symbol === "" ? 0 : glyph.width + 5)

    implicitWidth: Math.ceil(besideLabel + label.implicitWidth)
    implicitHeight: label.implicitHeight + 8
    radius: 6
    fill: bg
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Row {
        x: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 5

        Symbol {
            id: glyph

            anchors.verticalCenter: parent.verticalCenter
            visible: pill.symbol !== ""
            name: pill.symbol
            color: pill.fg
            size: 12
        }

        Text {
            id: label

            width: Math.min(Math.ceil(implicitWidth), Math.max(0, pill.width - pill.besideLabel))
            anchors.verticalCenter: parent.verticalCenter
            text: pill.text
            font: Theme.pill
            color: pill.fg
            elide: Text.ElideRight
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }
}
