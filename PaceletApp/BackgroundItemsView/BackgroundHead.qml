import QtQuick

/// The owner of the background items below.
Item {
    id: head

    required property string appPath
    required property string name
    required property string count

    implicitHeight: 32
    Accessible.role: Accessible.Heading
    Accessible.name: name + ", " + count

    OwnerIcon {
        id: icon

        appPath: head.appPath
    }

    ElidedText {
        id: words

        anchors.left: icon.right
        anchors.leftMargin: 10
        anchors.verticalCenter: icon.verticalCenter
        width: Math.min(Math.ceil(implicitWidth), head.width - 34 - 10 - number.width)
        text: head.name
        horizontalAlignment: Text.AlignLeft
        font: Theme.ownerName
        color: Theme.text
        Accessible.ignored: true
    }

    Text {
        id: number

        anchors.left: words.right
        anchors.leftMargin: 10
        anchors.verticalCenter: icon.verticalCenter
        text: head.count
        font: Theme.smallFigures
        color: Theme.text3
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
