pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Pacelet

/// The windows and tabs of the browser, and what can be done with them.
FocusScope {
    id: tabs

    required property BrowserPanelModel model

    /// The row at the top when the list was last seen.
    property int topRow: 0

    signal closed
    signal gone(int topRow)

    // The list has its rows from the start, and so can be scrolled at once.
    Component.onCompleted: list.positionViewAtIndex(Math.min(topRow, list.count - 1), ListView.Beginning)
    Component.onDestruction: gone(list.indexAt(0, list.contentY))

    Item {
        id: header

        width: parent.width
        height: Math.max(words.height, done.height)

        Column {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - done.width - 16
            spacing: 4

            ElidedText {
                width: parent.width
                text: tabs.model.look.counts
                font: Theme.sheetTitle
                color: Theme.text
                Accessible.role: Accessible.Heading
            }

            ElidedText {
                width: parent.width
                visible: text !== ""
                text: tabs.model.look.extensions
                font: Theme.control
                color: Theme.text2
            }
        }

        SecondaryButton {
            id: done

            anchors.right: parent.right
            anchors.top: parent.top
            text: qsTr("Done")
            onClicked: tabs.closed()
        }
    }

    Label {
        id: note

        anchors.top: header.bottom
        anchors.topMargin: 10
        width: parent.width
        text: tabs.model.look.note
        font: Theme.note
        color: Theme.text2
        wrapMode: Text.Wrap
    }

    BrowserActions {
        id: actions

        objectName: "actions"

        anchors.top: note.bottom
        anchors.topMargin: 16
        width: parent.width
        enabled: !tabs.model.working
        look: tabs.model.look
        onDuplicatesClosed: tabs.model.closeDuplicates()
        onSelectedClosed: tabs.model.closeSelected()
        onMerged: tabs.model.merge()
        onMemorySaverOpened: tabs.model.openMemorySaver()
    }

    // One stop for the Tab key; the arrows lead from row to row.
    T.Control {
        id: field

        /// The keyboard was used last.
        property bool byKeys: false

        anchors.top: actions.bottom
        anchors.topMargin: 16
        anchors.bottom: parent.bottom
        // The bar stands beside the rows, not upon them.
        width: parent.width + 14
        focus: true
        focusPolicy: Qt.StrongFocus
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Tabs")
        onActiveFocusChanged: byKeys = visualFocus

        function go(index: int) {
            byKeys = true;
            list.currentIndex = Math.max(0, Math.min(index, list.count - 1));
        }

        function toggleCurrent() {
            byKeys = true;
            const row = list.currentItem as TabListRow;
            if (row) {
                tabs.model.select(list.currentIndex, !row.ticked);
            }
        }

        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(height / 46) - 1);
            event.accepted = true;
            switch (event.key) {
            case Qt.Key_Up:
                return go(list.currentIndex - 1);
            case Qt.Key_Down:
                return go(list.currentIndex + 1);
            case Qt.Key_PageUp:
                return go(list.currentIndex - page);
            case Qt.Key_PageDown:
                return go(list.currentIndex + page);
            case Qt.Key_Home:
                return go(0);
            case Qt.Key_End:
                return go(list.count - 1);
            case Qt.Key_Space:
            case Qt.Key_Return:
            case Qt.Key_Enter:
                return toggleCurrent();
            }
            event.accepted = false;
        }

        contentItem: ListView {
            id: list

            objectName: "tabs"
            model: tabs.model.rows
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            reuseItems: true
            highlightMoveDuration: 0
            T.ScrollBar.vertical: QuietScrollBar {}

            delegate: TabListRow {
                id: row

                width: ListView.view.width - 14
                current: ListView.isCurrentItem && field.activeFocus && field.byKeys
                onSelected: selected => {
                    list.currentIndex = row.index;
                    field.forceActiveFocus(Qt.MouseFocusReason);
                    field.byKeys = false;
                    tabs.model.select(row.index, selected);
                }
            }
        }
    }
}
