import QtQuick
import Pacelet

/// What can be done with the tabs.
Item {
    id: actions

    required property tabsLook look

    signal duplicatesClosed
    signal selectedClosed
    signal merged
    signal memorySaverOpened

    readonly property real gap: 8

    implicitHeight: memorySaver.height

    Row {
        id: row

        spacing: actions.gap

        PrimaryButton {
            visible: actions.look.closeDuplicates !== ""
            text: actions.look.closeDuplicates
            onClicked: actions.duplicatesClosed()
        }

        Text {
            height: memorySaver.height
            visible: actions.look.closeDuplicates === ""
            rightPadding: 6
            text: "No duplicate tabs"
            font: Theme.rowSubtitle
            color: Theme.text3
            verticalAlignment: Text.AlignVCenter
        }

        PrimaryButton {
            visible: actions.look.closeSelected !== ""
            text: actions.look.closeSelected
            onClicked: actions.selectedClosed()
        }

        PrimaryButton {
            // A profile's name has no bounds.
            width: Math.min(implicitWidth, Math.max(0, memorySaver.x - x - actions.gap))
            visible: actions.look.merge !== ""
            text: actions.look.merge
            onClicked: actions.merged()
        }
    }

    SecondaryButton {
        id: memorySaver

        anchors.right: parent.right
        text: "Memory Saver settings"
        symbol: "leaf"
        onClicked: actions.memorySaverOpened()
    }
}
