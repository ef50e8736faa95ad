import QtQuick
import Pacelet

/// Tells how fresh the figures are, and stops or resumes the measuring.
Row {
    id: badge

    required property LiveBadgeModel model

    spacing: 14

    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Box {
            anchors.verticalCenter: parent.verticalCenter
            width: 6
            height: 6
            radius: 3
            fill: badge.model.paused ? Theme.amber : badge.model.checked ? Theme.green : Theme.text3
        }

        Label {
            text: badge.model.text
            font: Theme.figures
            color: Theme.text2
        }
    }

    SecondaryButton {
        objectName: "pause"
        text: badge.model.paused ? qsTr("Resume") : qsTr("Pause")
        symbol: badge.model.paused ? "play.fill" : "pause.fill"
        onClicked: badge.model.togglePause()
    }
}
