import QtQuick
import QtQuick.Templates as T
import Pacelet

/// A row of the process list: pressed, it opens to its panel or closes.
FocusScope {
    id: row

    required property string groupId
    required property string appPath
    required property string symbol
    required property string name
    required property string subtitle
    required property string cpu
    required property string memory
    required property string spoken
    required property string verdict
    required property fixLook fix
    required property string note
    /// The kernel's row; `cpu` is then a word in the colour of `tone`.
    required property bool kernel
    required property int tone
    required property bool open
    /// The keyboard works on it.
    required property bool current
    required property real place
    /// Height of the row's head and the line.
    required property real rowHeight
    /// Of the open row; null otherwise.
    property ProcessDetailModel detail

    /// The keyboard came here, not the pointer.
    readonly property bool keyboardFocus: head.visualFocus

    /// Width of what stands before the row's columns.
    readonly property real indent: 26

    signal toggled(string groupId)
    signal quitWanted(string groupId)
    signal panelMeasured(real height)

    y: place
    height: head.height + panel.height + line.height
    onCurrentChanged: {
        if (current && !activeFocus) {
            head.forceActiveFocus(Qt.TabFocusReason);
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: row.open
        color: Theme.card
    }

    T.AbstractButton {
        id: head

        /// See `ExpandableFace`.
        readonly property bool expanded: row.open

        objectName: "row head"
        width: parent.width
        height: row.rowHeight - line.height
        focusPolicy: Qt.StrongFocus
        Accessible.name: row.name
        Accessible.description: row.spoken
        onClicked: row.toggled(row.groupId)
        Keys.onReturnPressed: row.toggled(row.groupId)
        Keys.onEnterPressed: row.toggled(row.groupId)

        background: Rectangle {
            color: head.hovered ? Theme.rowHover : "transparent"

            FocusRing {
                anchors.margins: 1
                visible: head.visualFocus
                around: 5
            }
        }

        contentItem: Item {
            Item {
                x: 12
                width: 14
                height: parent.height

                Symbol {
                    anchors.centerIn: parent
                    name: row.open ? "chevron.down" : "chevron.right"
                    color: Theme.text3
                    size: 10
                }
            }

            Loader {
                x: row.indent
                width: parent.width - x
                height: parent.height
                sourceComponent: row.kernel ? kernelRow : processRow
            }
        }

        HoverHandler {
            cursorShape: Qt.PointingHandCursor
        }
    }

    // These are loaded from within a part of another file, so they cannot be bound up front.
    // qmllint disable unqualified
    Component {
        id: kernelRow

        KernelRow {
            appPath: ""
            symbol: row.symbol
            name: row.name
            subtitle: row.subtitle
            cpuText: row.cpu
            tone: row.tone
            memoryText: row.memory
            spoken: row.spoken
            Accessible.ignored: true
            verdictValue: row.verdict
            fix: row.fix
            note: row.note
        }
    }

    Component {
        id: processRow

        ProcessRow {
            appPath: row.appPath
            symbol: row.symbol
            name: row.name
            subtitle: row.subtitle
            cpuText: row.cpu
            memoryText: row.memory
            spoken: row.spoken
            Accessible.ignored: true
            verdictValue: row.verdict
            fix: row.fix
            note: row.note
            onFixed: row.quitWanted(row.groupId)
        }
    }

    Loader {
        id: panel

        y: head.height
        width: parent.width
        height: active ? implicitHeight : 0
        active: row.open && row.detail !== null
        onHeightChanged: {
            if (active) {
                row.panelMeasured(height);
            }
        }

        sourceComponent: Item {
            implicitHeight: detail.implicitHeight + 28

            ProcessDetail {
                id: detail

                objectName: "process detail"
                x: 60
                y: 14
                width: parent.width - x - 24
                model: row.detail
            }
        }
    }

    // qmllint enable unqualified
    Divider {
        id: line

        anchors.bottom: parent.bottom
        width: parent.width
    }
}
