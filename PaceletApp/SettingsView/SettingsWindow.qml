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
    // A low screen shows a part of it, which scrolls.
    readonly property real shownHeight: Math.min(formHeight, Screen.desktopAvailableHeight)

    height: shownHeight
    minimumWidth: width
    maximumWidth: width
    minimumHeight: shownHeight
    maximumHeight: shownHeight
    flags: Qt.Dialog
    title: qsTr("Settings")
    color: Theme.window

    Flickable {
        anchors.fill: parent
        contentHeight: window.formHeight
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds

        SettingsView {
            id: view

            objectName: "settings"
            width: window.width
            height: window.formHeight
            focus: true
            model: window.model
            onClosed: window.close()
        }
    }
}
