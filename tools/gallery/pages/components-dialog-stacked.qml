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
        title: "Quit Some Studio Professional Edition 2026 for Teams?"
        message: "Some Studio Professional Edition 2026 for Teams may ask you to save your work first."
        confirmText: "Quit Some Studio Professional Edition 2026 for Teams"
        destructive: false
    }
}
