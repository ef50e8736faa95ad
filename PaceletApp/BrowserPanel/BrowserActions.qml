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

    implicitHeight: Math.max(memorySaver.height, flow.height)

    // Beside the last button, in as many lines as they take.
    Flow {
        id: flow

        width: memorySaver.x - actions.gap
        spacing: actions.gap

        PrimaryButton {
            visible: actions.look.closeDuplicates !== ""
            text: actions.look.closeDuplicates
            onClicked: actions.duplicatesClosed()
        }

        Label {
            height: memorySaver.height
            visible: actions.look.closeDuplicates === ""
            rightPadding: 6
            text: qsTr("No duplicate tabs")
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
            width: Math.min(implicitWidth, flow.width)
            visible: actions.look.merge !== ""
            text: actions.look.merge
            onClicked: actions.merged()
        }
    }

    SecondaryButton {
        id: memorySaver

        anchors.right: parent.right
        text: qsTr("Memory Saver settings")
        symbol: "leaf"
        onClicked: actions.memorySaverOpened()
    }
}
