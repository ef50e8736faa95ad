import QtQuick

/// A surface that holds one thing. Its height follows its content; its content fills its width.
Box {
    id: card

    default property alias content: holder.data
    property real padding: 24

    implicitWidth: holder.childrenRect.width + 2 * padding
    implicitHeight: holder.childrenRect.height + 2 * padding
    radius: 16
    fill: Theme.card
    outline: Theme.line

    Item {
        id: holder

        anchors.fill: parent
        anchors.margins: card.padding
    }
}
