import QtQuick
import Pacelet

/// What the main window holds: its frame, bound to what the program knows.
RootView {
    id: main

    required property RootModel model

    ready: model.ready
    screens: model.sidebar.rows
    current: model.sidebar.current
    onChosen: screen => model.sidebar.choose(screen)
    commands: model.menu
    onCommandChosen: command => model.press(command)
    content: screen

    toast: model.toast
    problem: model.problem

    confirming: model.dialog.confirming
    confirmTitle: model.dialog.title
    confirmMessage: model.dialog.message
    confirmButton: model.dialog.confirmText
    confirmDestructive: model.dialog.destructive
    onConfirmed: model.dialog.confirm()
    onConfirmationCancelled: model.dialog.cancel()

    stuck: model.dialog.stuck
    stuckTitle: model.dialog.stuckTitle
    onRestartAsked: model.dialog.restart()
    onStuckDismissed: model.dialog.dismissStuck()

    Component {
        id: screen

        ScreenPlace {
            // Loaded by the frame, so the component cannot be bound to this context up front.
            model: main.model // qmllint disable unqualified
        }
    }

    SheetPlace {
        model: main.model.sheet
    }
}
