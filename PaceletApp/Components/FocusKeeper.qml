import QtQml
import QtQuick

/// Hands the focus of a window on when what has it cannot be seen: Qt leaves it there, and keys would
/// go where nobody looks.
QtObject {
    id: keeper

    /// Any item of the window.
    required property Item place

    readonly property Item holder: place?.Window.activeFocusItem ?? null

    // A popup that closes gives the focus back by itself, a moment later; maybe to what has gone.
    readonly property Connections watch: Connections {
        target: keeper.holder

        function onVisibleChanged() {
            Qt.callLater(keeper.handOn); // qmllint disable
        }
    }

    function handOn() {
        if (!keeper.holder || keeper.holder.visible) {
            return;
        }
        const next = keeper.holder.nextItemInFocusChain();
        if (next.visible) {
            next.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    onHolderChanged: Qt.callLater(keeper.handOn) // qmllint disable
}
