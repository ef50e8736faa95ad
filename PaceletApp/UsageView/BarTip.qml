import QtQuick

/// Tells of one bar. The chart itself says the same.
Box {
    id: bubble

    required property string value
    required property string time

    implicitWidth: Math.max(valueText.implicitWidth, timeText.implicitWidth) + 20
    implicitHeight: valueText.height + timeText.height + 14
    radius: 7
    fill: Theme.raised
    outline: Theme.controlBorder

    Shadow {
        radius: 7
        spread: 6
    }

    Text {
        id: valueText

        x: 10
        y: 6
        text: bubble.value
        font: Theme.fix
        color: Theme.text
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    Text {
        id: timeText

        x: 10
        anchors.top: valueText.bottom
        anchors.topMargin: 2
        text: bubble.time
        font: Theme.note
        color: Theme.text2
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
