import QtQuick

/// The columns of the process table, shared by its heading and its rows so that their edges meet. The
/// first one takes the width that the others leave.
Item {
    id: columns

    default property alias process: processCell.data
    property alias cpu: cpuCell.data
    property alias memory: memoryCell.data
    property alias verdict: verdictCell.data
    property alias action: actionCell.data

    /// Where room is scarce, the names need it more.
    readonly property bool narrow: width < 760
    readonly property real gap: narrow ? 8 : 16

    Item {
        id: processCell

        x: 12
        width: cpuCell.x - x - columns.gap
        height: parent.height
    }

    Item {
        id: cpuCell

        x: memoryCell.x - columns.gap - width
        width: 70
        height: parent.height
    }

    Item {
        id: memoryCell

        x: verdictCell.x - columns.gap - 8 - width
        width: 80
        height: parent.height
    }

    Item {
        id: verdictCell

        x: actionCell.x - columns.gap - width
        width: 130
        height: parent.height
    }

    Item {
        id: actionCell

        x: columns.width - 12 - width
        width: 170
        height: parent.height
    }
}
