import QtQml
import QtQuick
import QtQuick.Templates as T

/// Gives the focus back to where it was when the popup has gone. Until then, what stands behind a
/// modal one cannot take it.
QtObject {
    id: keeper

    required property T.Popup popup
    property Item before
    property bool ringed: false

    readonly property Item holder: popup.parent?.Window.activeFocusItem ?? null

    readonly property Connections watch: Connections {
        target: keeper.popup

        function onAboutToShow() {
            if (!keeper.before) {
                keeper.before = keeper.holder;
                keeper.ringed = (keeper.before as T.AbstractButton)?.visualFocus ?? false;
            }
        }

        function onOpened() {
            Qt.callLater(keeper.holdFast); // qmllint disable
        }

        function onClosed() {
            if (keeper.before) {
                keeper.before.forceActiveFocus(keeper.ringed ? Qt.TabFocusReason : Qt.PopupFocusReason);
            }
            keeper.before = null;
        }
    }

    function holdFast() {
        if (!popup.opened || !popup.modal) {
            return;
        }
        // Another popup may stand over this one.
        for (let item = holder; item; item = item.parent) {
            if (item.parent === popup.parent && item.z >= popup.z) {
                return;
            }
        }
        popup.forceActiveFocus(Qt.PopupFocusReason);
    }

    onHolderChanged: Qt.callLater(keeper.holdFast) // qmllint disable
}
