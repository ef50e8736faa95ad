pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T

/// A question over the window. Escape is "Cancel". Return presses the button that has the focus: the
/// confirming one at first, but the harmless one where something could be lost.
T.Popup {
    id: dialog

    property string title
    property string message
    property string confirmText
    property string cancelText: qsTr("Cancel")
    property bool destructive: false
    /// A longer paragraph of the message is cut off.
    property int paragraphLines: 100

    signal confirmed
    signal cancelled

    readonly property bool stacked: confirmButton.implicitWidth + cancelButton.implicitWidth + 10 > availableWidth

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: 420
    padding: 24
    implicitHeight: column.height + 2 * padding
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    onOpened: placeFocus()
    // The question may change while the dialog is on its way in.
    onDestructiveChanged: {
        if (visible) {
            placeFocus();
        }
    }

    function placeFocus() {
        (destructive ? cancelButton : confirmButton).forceActiveFocus(destructive ? Qt.TabFocusReason : Qt.PopupFocusReason);
    }

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }

    background: PopupGround {
        Accessible.role: Accessible.AlertMessage
        Accessible.name: dialog.title
        Accessible.description: dialog.message
    }

    enter: PopupEnter {}
    exit: PopupExit {}

    FocusReturn {
        popup: dialog
    }

    contentItem: Item {
        Keys.onEscapePressed: dialog.cancelled()

        Column {
            id: column

            width: parent.width
            spacing: 8

            Heading {
                width: parent.width
                text: dialog.title
                font: Theme.sectionTitle
                color: Theme.text
                wrapMode: Text.Wrap
            }

            Column {
                width: parent.width

                Repeater {
                    model: dialog.message === "" ? [] : dialog.message.split("\n")

                    Label {
                        required property string modelData

                        width: parent?.width ?? 0
                        text: modelData
                        font: Theme.control
                        color: Theme.text2
                        wrapMode: Text.Wrap
                        maximumLineCount: dialog.paragraphLines
                        elide: Text.ElideRight
                        lineHeight: 1.15
                    }
                }
            }

            Item {
                width: parent.width
                height: buttons.height + 12

                Grid {
                    id: buttons

                    readonly property real full: dialog.availableWidth

                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    columns: dialog.stacked ? 1 : 2
                    spacing: 10
                    // The confirming button stands at the end of a row, but on top of a pile.
                    layoutDirection: dialog.stacked ? Qt.LeftToRight : Qt.RightToLeft

                    FixStyle {
                        id: confirmButton

                        width: dialog.stacked ? buttons.full : Math.max(implicitWidth, 92)
                        text: dialog.confirmText
                        prominent: true
                        fill: dialog.destructive ? Theme.danger : Theme.button
                        hoverFill: dialog.destructive ? Theme.dangerHover : Theme.buttonHover
                        pressedFill: Qt.alpha(fill, 0.8)
                        onClicked: dialog.confirmed()
                    }

                    SecondaryButton {
                        id: cancelButton

                        width: dialog.stacked ? buttons.full : Math.max(implicitWidth, 92)
                        text: dialog.cancelText
                        onClicked: dialog.cancelled()
                    }
                }
            }
        }
    }
}
