import QtQuick

/// Tells how fresh the figures are, and stops or resumes the measuring.
Row {
    id: badge

    required property string text
    required property bool paused
    /// False before the first check.
    property bool checked: true

    signal pauseToggled

    spacing: 14

    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Box {
            anchors.verticalCenter: parent.verticalCenter
            width: 6
            height: 6
            radius: 3
            fill: badge.paused ? Theme.amber : badge.checked ? Theme.green : Theme.text3
        }

        Text {
            text: badge.text
            font: Theme.figures
            color: Theme.text2
            textFormat: Text.PlainText
        }
    }

    SecondaryButton {
        text: badge.paused ? "Resume" : "Pause"
        symbol: badge.paused ? "play.fill" : "pause.fill"
        onClicked: badge.pauseToggled()
    }
}
