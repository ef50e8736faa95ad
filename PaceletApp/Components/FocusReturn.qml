import QtQuick
import QtQuick.Templates as T

/// Gives the focus back to where it was when the popup has gone.
Connections {
    id: keeper

    required property T.Popup popup
    property Item before
    property bool ringed: false

    target: popup

    function onAboutToShow() {
        if (!before) {
            before = popup.parent?.Window.activeFocusItem ?? null;
            ringed = (before as T.AbstractButton)?.visualFocus ?? false;
        }
    }

    function onClosed() {
        if (before) {
            before.forceActiveFocus(ringed ? Qt.TabFocusReason : Qt.PopupFocusReason);
        }
        before = null;
    }
}
