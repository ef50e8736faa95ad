pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// The window of the settings. Its size is that of its content.
Window {
    id: window

    required property SettingsModel model

    // The content goes before its window does.
    readonly property real formHeight: view?.implicitHeight ?? height

    width: 460
    height: formHeight
    minimumWidth: width
    maximumWidth: width
    minimumHeight: formHeight
    maximumHeight: formHeight
    flags: Qt.Dialog
    title: qsTr("Settings")
    color: Theme.window

    SettingsView {
        id: view

        objectName: "settings"
        anchors.fill: parent
        focus: true
        model: window.model
        onClosed: window.close()
    }
}
