import QtQuick
import Pacelet

/// The load of the last day, week or month.
Column {
    id: section

    required property UsageModel model

    spacing: 14

    Item {
        width: parent.width
        height: range.height

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: "History"
            font: Theme.sectionTitle
            color: Theme.text
            Accessible.role: Accessible.Heading
        }

        SegmentedControl {
            id: range

            anchors.right: parent.right
            width: 280
            title: "Range"
            options: section.model.ranges
            current: section.model.range
            onChosen: place => section.model.chooseRange(place)
        }
    }

    Text {
        width: parent.width
        visible: text !== ""
        text: section.model.historyNote
        font: Theme.control
        color: Theme.text2
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }

    Row {
        id: charts

        readonly property real chartWidth: Math.floor((width - 2 * spacing) / 3)

        width: parent.width
        spacing: 16
        visible: section.model.loaded && section.model.historyNote === ""

        HistoryChart {
            width: charts.chartWidth
            chart: section.model.cpuChart
            timeTicks: section.model.timeTicks
            color: Theme.accentLight
        }

        HistoryChart {
            width: charts.chartWidth
            chart: section.model.pressureChart
            timeTicks: section.model.timeTicks
            color: Theme.amber
        }

        HistoryChart {
            width: charts.width - 2 * charts.chartWidth - 2 * charts.spacing
            chart: section.model.swapChart
            timeTicks: section.model.timeTicks
            color: Theme.red
        }
    }
}
