import QtQuick
import QtQuick.Templates as T

/// A menu that pops up. Arrow keys walk through it, Return and Space choose, Escape closes it.
T.Menu {
    id: menu

    implicitWidth: 248
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: 8
    padding: 6
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    background: PopupGround {
        Accessible.role: Accessible.PopupMenu
        Accessible.name: menu.title
    }

    enter: PopupEnter {}
    exit: PopupExit {}

    FocusReturn {
        popup: menu
    }

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: contentHeight > height
        currentIndex: menu.currentIndex
        clip: true
    }
}
