import QtQuick

/// The heading of a screen. What stands inside goes to its right end.
Item {
    id: header

    required property string title
    property string subtitle
    default property alias trailing: end.data

    implicitHeight: words.height

    Column {
        id: words

        width: parent.width - (end.width > 0 ? end.width + 24 : 0)
        spacing: 5

        ElidedText {
            width: parent.width
            text: header.title
            font: Theme.title
            color: Theme.text
            Accessible.role: Accessible.Heading
        }

        ElidedText {
            width: parent.width
            text: header.subtitle
            font: Theme.subtitle
            color: Theme.text2
        }
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
    }
}
