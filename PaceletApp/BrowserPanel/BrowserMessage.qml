import QtQuick
import Pacelet

/// A headline, what stands below it, and the buttons of what can be done. The last button is the
/// one to press by default.
FocusScope {
    id: message

    property string symbol
    required property messageLook look
    property real spacing: 14
    property real wordSpacing: 10
    default property alias buttons: row.data

    implicitHeight: column.height

    Column {
        id: column

        width: parent.width
        spacing: message.spacing

        Symbol {
            visible: message.symbol !== ""
            name: message.symbol
            color: Theme.accent
            size: 30
        }

        Column {
            width: parent.width
            spacing: message.wordSpacing

            Heading {
                width: parent.width
                text: message.look.heading
                font: Theme.heading
                color: Theme.text
                wrapMode: Text.Wrap
            }

            Label {
                width: parent.width
                visible: text !== ""
                text: message.look.body
                font: Theme.body
                color: Theme.text2
                wrapMode: Text.Wrap
                maximumLineCount: 14
                elide: Text.ElideRight
                lineHeight: 1.15
            }
        }

        Row {
            id: row

            spacing: 10
        }
    }
}
