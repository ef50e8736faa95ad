import QtQuick

/// A surface that holds one thing. Its height follows its content; its content fills its width.
Rectangle {
    id: card

    default property alias content: holder.data
    property real padding: 24

    implicitWidth: holder.childrenRect.width + 2 * padding
    implicitHeight: holder.childrenRect.height + 2 * padding
    radius: 16
    color: Theme.card
    border.color: Theme.line

    Item {
        id: holder

        anchors.fill: parent
        anchors.margins: card.padding
    }
}
