import QtQuick
import Pacelet

/// One thing that is wrong with the connection, and what to do about it.
Item {
    id: row

    required property string symbol
    /// A `Tone`.
    required property int tone
    required property string title
    required property string detail
    property fixLook fix
    property bool first: true
    /// Stands alone in its card.
    property bool large: false

    signal fixed

    implicitHeight: Math.max(tile.height, words.height) + (large ? 40 : 32)

    Divider {
        width: parent.width
        visible: !row.first
    }

    Box {
        id: tile

        anchors.verticalCenter: parent.verticalCenter
        width: row.large ? 56 : 44
        height: width
        radius: width / 4
        fill: Theme.background(row.tone)

        Symbol {
            anchors.centerIn: parent
            name: row.symbol
            color: Theme.foreground(row.tone)
            size: row.large ? 26 : 20
        }
    }

    Column {
        id: words

        anchors.left: tile.right
        anchors.leftMargin: 18
        anchors.right: button.visible ? button.left : parent.right
        anchors.rightMargin: button.visible ? 18 : 0
        anchors.verticalCenter: parent.verticalCenter
        spacing: row.large ? 6 : 4

        Heading {
            width: parent.width
            text: row.title
            font: row.large ? Theme.heading : Theme.sectionTitle
            color: Theme.text
            wrapMode: Text.Wrap
            maximumLineCount: 3
            elide: Text.ElideRight
        }

        Label {
            width: parent.width
            visible: text !== ""
            text: row.detail
            font: Theme.body
            color: Theme.text2
            wrapMode: Text.Wrap
            lineHeight: 1.2
        }
    }

    FixButton {
        id: button

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        title: row.fix.title
        symbol: row.fix.symbol
        purple: row.fix.purple
        onClicked: row.fixed()
    }
}
