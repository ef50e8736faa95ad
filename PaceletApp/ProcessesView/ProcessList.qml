pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Pacelet

/// The scrolling rows below the titles of their columns. Only the rows in view are there.
Item {
    id: list

    required property ProcessViewport table
    /// Of the open row; null when there is none.
    required property ProcessDetailModel detail
    /// Between the rows and the right edge, where the scroll bar is.
    required property real sidePadding

    signal toggled(string groupId)
    signal quitWanted(string groupId)

    readonly property real rowWidth: width - sidePadding

    function scrollBy(distance: real) {
        flickable.contentY = Math.max(0, Math.min(flickable.contentY + distance, flickable.contentHeight + flickable.bottomMargin - flickable.height));
    }

    ProcessTableHeader {
        id: header

        x: 26
        width: list.rowWidth - x
    }

    Divider {
        id: line

        anchors.top: header.bottom
        width: list.rowWidth
    }

    Flickable {
        id: flickable

        objectName: "process list"
        anchors.top: line.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        contentWidth: width
        contentHeight: list.table.contentHeight
        bottomMargin: 28
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        onContentYChanged: tell()
        onHeightChanged: tell()
        Component.onCompleted: tell()
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Processes")

        function tell() {
            list.table.setView(contentY, Math.max(0, height - bottomMargin));
        }

        T.ScrollBar.vertical: QuietScrollBar {}

        Connections {
            target: list.table

            function onScrolled(y: real) {
                flickable.contentY = y;
            }
        }

        Repeater {
            model: list.table.rows

            ExpandableRow {
                id: row

                width: list.rowWidth
                rowHeight: list.table.rowHeight
                detail: open ? list.detail : null
                onToggled: groupId => list.toggled(groupId)
                onQuitWanted: groupId => list.quitWanted(groupId)
                onPanelMeasured: height => list.table.setPanelHeight(height)
                onActiveFocusChanged: {
                    if (activeFocus) {
                        list.table.enter(groupId, row.keyboardFocus);
                    } else {
                        list?.table.leave(groupId);
                    }
                }
                Keys.onUpPressed: list.table.step(-1)
                Keys.onDownPressed: list.table.step(1)
                Keys.onPressed: event => {
                    const page = list.table.rowsInView();
                    const rows = {
                        [Qt.Key_PageUp]: -page,
                        [Qt.Key_PageDown]: page,
                        [Qt.Key_Home]: -list.table.count,
                        [Qt.Key_End]: list.table.count
                    }[event.key];
                    event.accepted = rows !== undefined;
                    if (event.accepted) {
                        list.table.step(rows);
                    }
                }
            }
        }
    }
}
