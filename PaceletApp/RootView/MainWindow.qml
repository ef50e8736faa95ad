pragma ComponentBehavior: Bound
import QtQuick
import QtQml.Models
import Pacelet

/// The main window.
Window {
    id: window

    required property RootModel model

    // At least as large as its content needs, and otherwise no larger than the screen.
    width: Math.max(minimumWidth, Math.min(1200, Screen.desktopAvailableWidth))
    height: Math.max(minimumHeight, Math.min(860, Screen.desktopAvailableHeight))
    minimumWidth: 1000
    minimumHeight: 700
    title: "Pacelet"
    color: Theme.window

    RootView {
        objectName: "main"
        anchors.fill: parent
        focus: true
        model: window.model
    }

    Instantiator {
        model: window.model.shortcuts

        Shortcut {
            required property int index
            required property string modelData

            sequence: modelData
            // With the settings in front, too, which close themselves.
            context: index === window.model.closeCommand ? Qt.WindowShortcut : Qt.ApplicationShortcut
            onActivated: window.model.press(index)
        }
    }
}
