import QtQuick
import Pacelet

/// The window of the menu-bar panel. Escape closes it, and so does a click elsewhere.
Window {
    id: window

    required property MenuBarModel model

    // The content goes before the window that it measures, which is painted once more after that.
    width: view?.implicitWidth ?? 1
    height: view?.implicitHeight ?? 1
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: "Pacelet"
    color: Theme.card

    FocusKeeper {
        place: view
    }

    MenuBarView {
        id: view

        objectName: "panel"
        anchors.fill: parent
        focus: true
        model: window.model
        Keys.onEscapePressed: window.close()
    }

    Box {
        anchors.fill: parent
        outline: Theme.controlBorder
    }
}
