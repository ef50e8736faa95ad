import QtQuick

/// The frame of the main window: the sidebar, the screen on show, and what floats over them.
FocusScope {
    id: root

    /// See `Sidebar`.
    required property var screens
    required property int current
    /// Makes the screen on show. Only that one lives.
    required property Component content
    /// False stands for a catalog that could not be loaded: nothing else is then reachable.
    required property bool ready

    /// See `Sidebar`.
    property var commands: null

    property string toast
    /// See `Sidebar`.
    property string problem

    property bool confirming: false
    property string confirmTitle
    property string confirmMessage
    property string confirmButton
    property bool confirmDestructive: false

    property bool stuck: false
    property string stuckTitle

    signal chosen(int screen)
    signal commandChosen(int command)
    signal confirmed
    signal confirmationCancelled
    signal restartAsked
    signal stuckDismissed

    implicitWidth: 1200
    implicitHeight: 860

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    Sidebar {
        id: sidebar

        height: parent.height
        screens: root.screens
        current: root.current
        problem: root.problem
        commands: root.commands
        onChosen: screen => root.chosen(screen)
        onCommandChosen: command => root.commandChosen(command)
    }

    Divider {
        id: divider

        anchors.left: sidebar.right
        height: parent.height
    }

    Loader {
        anchors.left: divider.right
        anchors.right: parent.right
        height: parent.height
        active: root.ready
        sourceComponent: root.content
    }

    Loader {
        anchors.left: divider.right
        anchors.right: parent.right
        height: parent.height
        active: !root.ready
        sourceComponent: MissingCatalog {}
    }

    ToastView {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 28
        text: root.toast
    }

    AlertDialog {
        visible: root.confirming
        title: root.confirmTitle
        message: root.confirmMessage
        confirmText: root.confirmButton
        destructive: root.confirmDestructive
        onConfirmed: root.confirmed()
        onCancelled: root.confirmationCancelled()
    }

    AlertDialog {
        visible: root.stuck
        title: root.stuckTitle
        confirmText: "Restart…"
        cancelText: "Not now"
        onConfirmed: root.restartAsked()
        onCancelled: root.stuckDismissed()
    }
}
