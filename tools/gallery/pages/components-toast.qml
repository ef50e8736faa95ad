import QtQuick
import Pacelet

Rectangle {
    width: 640
    height: 220
    color: Theme.window

    Column {
        anchors.centerIn: parent
        spacing: 32

        ToastView {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Google Chrome already quit"
        }

        ToastView {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Couldn't finish: the script that asks the browser to close its windows ended with an error that nobody has ever seen before"
        }
    }
}
