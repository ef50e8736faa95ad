// The heading of a list cannot be bound to its context up front.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Pacelet

/// What is set up to run in the background, by owner.
FocusScope {
    id: view

    required property BackgroundItemsModel model

    focus: true

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ListView {
        id: list

        readonly property real side: Theme.sideMargin(width)

        objectName: "backgroundItems"
        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: false
        model: view.model.rows
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        reuseItems: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Background Items")
        T.ScrollBar.vertical: QuietScrollBar {}

        function scrollBy(distance: real) {
            contentY = Math.max(originY, Math.min(contentY + distance, originY + contentHeight - height));
        }

        Keys.onPressed: event => {
            event.accepted = true;
            switch (event.key) {
            case Qt.Key_Up:
                return scrollBy(-48);
            case Qt.Key_Down:
                return scrollBy(48);
            case Qt.Key_PageUp:
                return scrollBy(48 - height);
            case Qt.Key_PageDown:
                return scrollBy(height - 48);
            case Qt.Key_Home:
                return positionViewAtBeginning();
            case Qt.Key_End:
                return positionViewAtEnd();
            }
            event.accepted = false;
        }

        header: Item {
            width: ListView.view.width
            height: 28 + heading.height
            // The list starts out with its rows in view, before the heading has its height.
            onHeightChanged: Qt.callLater(list.positionViewAtBeginning)

            ScreenHeader {
                id: heading

                x: list.side
                y: 28
                width: parent.width - 2 * list.side
                title: qsTr("Background Items")
                subtitle: qsTr("Apps can add helpers that run in the background. Here's what each one does.")
            }
        }

        footer: Item {
            width: ListView.view.width
            height: 28
        }

        delegate: Item {
            id: row

            required property bool head
            required property bool first
            required property bool last
            required property string title
            required property string appPath
            required property string subtitle
            required property string scope
            required property bool running
            required property string figures
            required property string verdict

            width: ListView.view.width
            height: head ? 24 + owner.height : entry.implicitHeight

            BackgroundHead {
                id: owner

                x: list.side
                y: 24
                width: parent.width - 2 * list.side
                height: implicitHeight
                visible: row.head
                appPath: row.head ? row.appPath : ""
                name: row.head ? row.title : ""
                count: row.head ? row.subtitle : ""
            }

            CardSlice {
                x: list.side
                width: parent.width - 2 * list.side
                height: parent.height
                visible: !row.head
                first: row.first
                last: row.last
            }

            BackgroundItemRow {
                id: entry

                x: list.side
                width: parent.width - 2 * list.side
                height: implicitHeight
                visible: !row.head
                title: row.head ? "" : row.title
                label: row.head ? "" : row.subtitle
                scope: row.scope
                running: row.running
                figures: row.figures
                verdict: row.verdict
            }
        }
    }

    FocusRing {
        anchors.margins: 4
        visible: list.activeFocus
        around: 6
    }

    EmptyState {
        anchors.centerIn: parent
        width: Math.min(parent.width - 68, 520)
        visible: view.model.empty
        symbol: "checkmark.circle"
        title: qsTr("No background items found")
        description: qsTr("Nothing is set to run in the background.")
    }
}
