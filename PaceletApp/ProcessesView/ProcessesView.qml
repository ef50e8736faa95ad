pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// Everything that runs, one row an application, with a verdict each.
FocusScope {
    id: view

    required property ProcessesModel model

    readonly property real side: Theme.sideMargin(width)

    Keys.onEscapePressed: field.clear()
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown;
        if (event.accepted) {
            list.scrollBy((event.key === Qt.Key_PageUp ? -1 : 1) * (list.height - 96));
        }
    }
    Component.onCompleted: {
        if (model.opensWithSearch) {
            field.forceActiveFocus(Qt.ShortcutFocusReason);
        }
    }

    Connections {
        target: view.model

        function onSearchWanted() {
            field.forceActiveFocus(Qt.ShortcutFocusReason);
            field.selectAll();
        }
    }

    Column {
        id: top

        x: view.side
        y: 28
        width: parent.width - 2 * view.side
        spacing: 18

        ScreenHeader {
            width: parent.width
            title: qsTr("Processes")
            subtitle: qsTr("Everything running on your Mac, in plain English.")

            LiveBadge {
                model: view.model.badge
            }
        }

        Item {
            width: parent.width
            height: field.height

            SearchField {
                id: field

                objectName: "search"
                width: Math.min(420, parent.width - sort.width - 16)
                prompt: qsTr("Search processes, like mds or Chrome")
                onTextChanged: view.model.search = text
                Keys.onDownPressed: view.model.table.enterTop()
            }

            SegmentedControl {
                id: sort

                objectName: "sort"
                anchors.right: parent.right
                width: 170
                height: parent.height
                title: qsTr("Sort")
                options: [qsTr("CPU"), qsTr("Memory")]
                current: view.model.sortByMemory ? 1 : 0
                onChosen: index => view.model.sortByMemory = index === 1
            }
        }

        Row {
            spacing: 8
            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("Filter")

            Repeater {
                model: view.model.chips

                Chip {
                    required property string value
                    required property string label
                    required property bool chosen

                    text: label
                    selected: chosen
                    onClicked: view.model.choose(value)
                }
            }
        }
    }

    Label {
        anchors.top: top.bottom
        anchors.topMargin: 40
        x: view.side
        width: parent.width - 2 * view.side
        visible: text !== ""
        text: view.model.emptyText
        font: Theme.body
        color: Theme.text2
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }

    ProcessList {
        id: list

        anchors.top: top.bottom
        anchors.topMargin: 18
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: view.side
        anchors.right: parent.right
        sidePadding: view.side
        visible: view.model.emptyText === ""
        table: view.model.table
        detail: view.model.detail
        onToggled: groupId => view.model.toggle(groupId)
        onQuitWanted: groupId => view.model.quit(groupId)
    }
}
