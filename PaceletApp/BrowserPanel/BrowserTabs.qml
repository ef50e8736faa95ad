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
            text: "Done"
            onClicked: tabs.closed()
        }
    }

    Text {
        id: note

        anchors.top: header.bottom
        anchors.topMargin: 10
        width: parent.width
        text: tabs.model.look.note
        font: Theme.note
        color: Theme.text2
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
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

    ListView {
        id: list

        objectName: "tabs"
        anchors.top: actions.bottom
        anchors.topMargin: 16
        anchors.bottom: parent.bottom
        // The bar stands beside the rows, not upon them.
        width: parent.width + 14
        focus: true
        activeFocusOnTab: true
        model: tabs.model.rows
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        reuseItems: true
        highlightMoveDuration: 0
        Accessible.role: Accessible.List
        Accessible.name: "Tabs"
        T.ScrollBar.vertical: QuietScrollBar {}

        property bool byKeys: false

        function go(index: int) {
            byKeys = true;
            currentIndex = Math.max(0, Math.min(index, count - 1));
        }

        function toggleCurrent() {
            const row = currentItem as TabListRow;
            if (row) {
                tabs.model.select(currentIndex, !row.ticked);
            }
        }

        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(height / 46) - 1);
            event.accepted = true;
            switch (event.key) {
            case Qt.Key_Up:
                return go(currentIndex - 1);
            case Qt.Key_Down:
                return go(currentIndex + 1);
            case Qt.Key_PageUp:
                return go(currentIndex - page);
            case Qt.Key_PageDown:
                return go(currentIndex + page);
            case Qt.Key_Home:
                return go(0);
            case Qt.Key_End:
                return go(count - 1);
            case Qt.Key_Space:
            case Qt.Key_Return:
            case Qt.Key_Enter:
                byKeys = true;
                return toggleCurrent();
            }
            event.accepted = false;
        }
        onActiveFocusChanged: byKeys = activeFocus && byKeys

        delegate: TabListRow {
            id: row

            width: ListView.view.width - 14
            current: ListView.isCurrentItem && list.activeFocus && list.byKeys
            onSelected: selected => {
                list.byKeys = false;
                list.currentIndex = row.index;
                list.forceActiveFocus(Qt.MouseFocusReason);
                tabs.model.select(row.index, selected);
            }
        }
    }
}
