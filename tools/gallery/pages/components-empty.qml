import QtQuick
import Pacelet

Rectangle {
    width: 640
    height: 360
    color: Theme.window

    EmptyState {
        anchors.centerIn: parent
        width: 480
        symbol: "exclamationmark.triangle"
        title: "Pacelet couldn't load its process list. Reinstall Pacelet."
    }
}
