import QtQuick

/// Says that something is on its way. Turns in steps, and only while somebody can see it.
Symbol {
    id: spinner

    property int step: 0

    name: "spinner"
    color: Theme.text2
    size: 18
    rotation: step * 30
    Accessible.ignored: false
    Accessible.role: Accessible.Animation
    Accessible.name: qsTr("Working")

    Timer {
        running: spinner.visible && !Theme.reducedMotion && spinner.Window.visibility !== Window.Hidden
            && spinner.Window.visibility !== Window.Minimized
        interval: 83
        repeat: true
        onTriggered: spinner.step = (spinner.step + 1) % 12
    }
}
