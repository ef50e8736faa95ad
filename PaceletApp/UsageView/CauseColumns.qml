import QtQuick

/// The columns of the list of causes, for its head and its rows.
Item {
    id: columns

    property alias cause: causeCell.data
    property alias strip: stripCell.data
    property alias figures: figuresCell.data
    property alias last: lastCell.data

    readonly property real margin: 20
    readonly property real gap: width < 760 ? 14 : 22
    readonly property alias stripWidth: stripCell.width

    Item {
        id: causeCell

        x: columns.margin
        width: stripCell.x - columns.gap - x
        height: parent.height
    }

    Item {
        id: stripCell

        anchors.right: figuresCell.left
        anchors.rightMargin: columns.gap
        width: Math.round(columns.width * (columns.width < 760 ? 0.3 : 0.38))
        height: parent.height
    }

    Item {
        id: figuresCell

        anchors.right: lastCell.left
        anchors.rightMargin: columns.gap
        width: 92
        height: parent.height
    }

    Item {
        id: lastCell

        anchors.right: parent.right
        anchors.rightMargin: columns.margin
        width: 84
        height: parent.height
    }
}
