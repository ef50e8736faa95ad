pragma ComponentBehavior: Bound
import QtQuick
import QtQml.Models
import QtQuick.Templates as T
import Pacelet

/// The main window.
Window {
    id: window

    required property RootModel model

    /// What its screen has room for.
    property size room: Qt.size(Math.max(leastSize.width, Screen.desktopAvailableWidth), Math.max(leastSize.height, Screen.desktopAvailableHeight))
    readonly property size leastSize: Qt.size(1000, 700)

    /// Its screen has no room for the least size: it has to take all of it, and scrolls.
    readonly property bool takesScreen: room.width < leastSize.width || room.height < leastSize.height

    width: Math.min(1200, room.width)
    height: Math.min(860, room.height)
    minimumWidth: Math.min(leastSize.width, room.width)
    minimumHeight: Math.min(leastSize.height, room.height)
    title: "Pacelet"
    color: Theme.window

    Flickable {
        id: port

        // Screens scroll by themselves, so that they need less height than breadth.
        readonly property real leastHeight: 480
        readonly property Item focused: window.activeFocusItem

        objectName: "port"
        anchors.fill: parent
        contentWidth: Math.max(width, window.leastSize.width)
        contentHeight: Math.max(height, leastHeight)
        interactive: contentWidth > width || contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        onFocusedChanged: reveal(focused)

        T.ScrollBar.horizontal: QuietScrollBar {
            alwaysSeen: true
        }
        T.ScrollBar.vertical: QuietScrollBar {
            alwaysSeen: true
        }

        /// Where `length` from `begin` on is seen, coming from `now`.
        function scrolled(now: real, begin: real, length: real, span: real): real {
            return Math.max(0, Math.min(begin, Math.max(now, begin + length - span)));
        }

        function reveal(item: Item) {
            for (let above = item; above; above = above.parent) {
                if (above === main) {
                    const place = item.mapToItem(main, 0, 0);
                    contentX = scrolled(contentX, place.x, Math.min(item.width, width), width);
                    contentY = scrolled(contentY, place.y, Math.min(item.height, height), height);
                    return;
                }
            }
        }

        RootView {
            id: main

            objectName: "main"
            anchors.fill: parent
            focus: true
            model: window.model
        }
    }

    Instantiator {
        model: window.model.shortcuts

        Shortcut {
            required property int index
            required property string modelData

            sequence: modelData
            // With the settings in front, too, which close themselves.
            context: index === window.model.closeCommand ? Qt.WindowShortcut : Qt.ApplicationShortcut
            onActivated: window.model.press(index)
        }
    }
}
