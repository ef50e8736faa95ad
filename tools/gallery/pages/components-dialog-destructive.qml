import QtQuick
import Pacelet

Rectangle {
    width: 720
    height: 420
    color: Theme.window

    Card {
        x: 34
        y: 28
        width: parent.width - 68

        Text {
            text: "Behind the question"
            font: Theme.heading
            color: Theme.text
        }
    }

    AlertDialog {
        visible: true
        title: "Google Chrome isn't responding."
        message: "Force quit it? Unsaved work in Google Chrome will be lost."
        confirmText: "Force Quit"
        destructive: true
    }
}
