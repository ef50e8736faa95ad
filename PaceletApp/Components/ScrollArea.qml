import QtQuick
import QtQuick.Templates as T

/// A column that scrolls. Scrolls by the keyboard, too, and brings into view what gets the focus.
Flickable {
    id: area

    default property alias content: column.data
    property alias spacing: column.spacing
    property real sidePadding: Theme.sideMargin(width)
    property real topPadding: 28
    property real bottomPadding: 28

    contentWidth: width
    contentHeight: column.y + column.height + bottomPadding
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    Keys.onUpPressed: scrollBy(-48)
    Keys.onDownPressed: scrollBy(48)
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_PageUp) {
            scrollBy(48 - height);
        } else if (event.key === Qt.Key_PageDown) {
            scrollBy(height - 48);
        } else if (event.key === Qt.Key_Home) {
            contentY = 0;
        } else if (event.key === Qt.Key_End) {
            scrollBy(contentHeight);
        } else {
            event.accepted = false;
        }
    }

    T.ScrollBar.vertical: QuietScrollBar {}

    readonly property Item focused: Window.activeFocusItem

    onFocusedChanged: reveal(focused)

    function scrollBy(distance: real) {
        contentY = Math.max(0, Math.min(contentY + distance, contentHeight - height));
    }

    function reveal(item: Item) {
        for (let above = item; above; above = above.parent) {
            if (above === column) {
                const top = item.mapToItem(column, 0, 0).y + column.y - 12;
                const bottom = top + item.height + 24;
                if (top < contentY) {
                    contentY = Math.max(0, top);
                } else if (bottom > contentY + height) {
                    contentY = Math.min(bottom - height, contentHeight - height);
                }
                return;
            }
        }
    }

    Column {
        id: column

        x: area.sidePadding
        y: area.topPadding
        width: area.width - 2 * area.sidePadding
    }
}
