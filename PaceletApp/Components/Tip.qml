import QtQuick
import QtQuick.Templates as T

/// The tip over an item; comes up when the pointer has rested a while.
T.ToolTip {
    id: bubble

    required property string tip
    required property Item about

    parent: about
    x: Math.round((about.width - implicitWidth) / 2)
    y: -implicitHeight - 6
    margins: 8
    leftPadding: 10
    rightPadding: 10
    topPadding: 6
    bottomPadding: 6
    implicitWidth: leftPadding + words.width + rightPadding
    implicitHeight: topPadding + words.height + bottomPadding
    closePolicy: T.Popup.NoAutoClose

    contentItem: Item {
        Label {
            id: words

            objectName: "tip words"

            width: Math.min(Math.ceil(implicitWidth), 420)
            text: bubble.tip
            Accessible.role: Accessible.ToolTip
            font: Theme.note
            color: Theme.text
            wrapMode: Text.Wrap
        }
    }

    background: Box {
        radius: 7
        fill: Theme.raised
        outline: Theme.controlBorder

        Shadow {
            radius: 7
            spread: 6
        }
    }

    Timer {
        running: true
        interval: Theme.tipDelay
        onTriggered: bubble.open()
    }
}
