import QtQuick
import Pacelet

/// The load of the last ten minutes.
Card {
    id: card

    required property string figure
    /// The chart in words.
    required property string description
    required property loadCurve curve

    Column {
        width: parent.width
        spacing: 10

        SectionLabel {
            text: qsTr("CPU load, last 10 minutes")
        }

        Label {
            text: card.figure
            font: Theme.largeFigures
            color: Theme.text
        }

        ChartFrame {
            width: parent.width
            height: 140
            valueTicks: card.curve.valueTicks
            timeTicks: card.curve.timeTicks
            Accessible.role: Accessible.Chart
            Accessible.name: card.description

            LoadPlot {
                anchors.fill: parent
                curve: card.curve
                color: Theme.accent
            }
        }
    }
}
