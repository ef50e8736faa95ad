import QtQuick

/// A small label on its own ground.
Rectangle {
    id: pill

    property string text
    property string symbol
    property color fg: Theme.text2
    property color bg: Theme.raised

    implicitWidth: content.width + 16
    implicitHeight: label.implicitHeight + 8
    radius: 6
    color: bg
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Row {
        id: content

        x: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 5

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: pill.symbol !== ""
            name: pill.symbol
            color: pill.fg
            size: 12
        }

        Text {
            id: label

            width: Math.min(Math.ceil(implicitWidth), pill.width > 0 ? Math.max(0, pill.width - 16 - x) : implicitWidth)
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
