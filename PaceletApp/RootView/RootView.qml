import QtQuick
import Pacelet

/// What the main window holds: the sidebar, the screen on show, and what floats over them.
FocusScope {
    id: root

    required property RootModel model

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    Sidebar {
        id: sidebar

        height: parent.height
        screens: root.model.sidebar.rows
        current: root.model.sidebar.current
        problem: root.model.problem
        commands: root.model.menu
        onChosen: screen => root.model.sidebar.choose(screen)
        onCommandChosen: command => root.model.press(command)
    }

    Divider {
        id: divider

        anchors.left: sidebar.right
        height: parent.height
    }

    // The screen on show, and only that one lives.
    Loader {
        anchors.left: divider.right
        anchors.right: parent.right
        height: parent.height
        active: root.model.ready
        sourceComponent: ScreenPlace {
            // A loader makes it, so it cannot be bound to this context up front.
            model: root.model // qmllint disable unqualified
        }
    }

    // Without its catalog nothing else can be reached.
    Loader {
        anchors.left: divider.right
        anchors.right: parent.right
        height: parent.height
        active: !root.model.ready
        sourceComponent: MissingCatalog {
            title: root.model.missingCatalog // qmllint disable unqualified
        }
    }

    ToastView {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 28
        text: root.model.toast
    }

    News {
        objectName: "news"
        words: root.model.news
    }

    PopupPlace {
        wanted: root.model.question.open
        sourceComponent: QuestionDialog {
            question: root.model.question // qmllint disable unqualified
        }
    }

    PopupPlace {
        wanted: root.model.sheet.open
        sourceComponent: SheetPlace {
            model: root.model.sheet // qmllint disable unqualified
        }
    }
}
