import QtQuick

/// A short message in a floating capsule. Shows while it has a text, and keeps the words while it
/// fades.
Box {
    id: toast

    property string text

    readonly property bool shown: text !== ""
    property string lastText

    onTextChanged: {
        if (text !== "") {
            lastText = text;
        }
    }

    implicitWidth: words.width + 36
    implicitHeight: words.height + 22
    radius: Math.min(height / 2, 21)
    fill: Theme.raised
    outline: Theme.controlBorder
    visible: opacity > 0
    opacity: shown ? 1 : 0
    Accessible.role: Accessible.AlertMessage
    Accessible.name: lastText

    transform: Translate {
        y: toast.shown ? 0 : 8

        Behavior on y {
            NumberAnimation {
                duration: Theme.settle
                easing.type: Easing.OutCubic
            }
        }
    }

    Behavior on opacity {
        NumberAnimation {
            duration: Theme.settle
        }
    }

    Shadow {
        radius: toast.radius
        spread: 16
    }

    Text {
        id: words

        anchors.centerIn: parent
        width: Math.min(Math.ceil(implicitWidth), 520)
        text: toast.lastText
        font: Theme.controlMedium
        color: Theme.text
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
