import QtQuick
import QtQuick.Templates as T

/// A panel over the window that stays until its content closes it, or Escape where it may.
T.Popup {
    id: sheet

    property bool dismissable: true

    signal dismissed

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    padding: 28
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    margins: 24
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }

    background: PopupGround {
        fill: Theme.window
    }

    enter: PopupEnter {}
    exit: PopupExit {}

    FocusReturn {
        popup: sheet
    }

    contentItem: FocusScope {
        implicitWidth: childrenRect.width
        implicitHeight: childrenRect.height
        focus: true
        Keys.onEscapePressed: event => {
            event.accepted = sheet.dismissable;
            if (sheet.dismissable) {
                sheet.dismissed();
            }
        }
    }
}
