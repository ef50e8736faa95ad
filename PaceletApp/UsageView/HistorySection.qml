import QtQuick
import Pacelet

/// The load of the last day, week or month.
Column {
    id: section

    required property UsageModel model

    readonly property alias causes: causes

    spacing: 14

    Item {
        width: parent.width
        height: range.height

        Heading {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("History")
            font: Theme.sectionTitle
            color: Theme.text
        }

        SegmentedControl {
            id: range

            anchors.right: parent.right
            width: 280
            title: qsTr("Range")
            options: section.model.ranges
            current: section.model.range
            onChosen: place => section.model.chooseRange(place)
        }
    }

    Label {
        width: parent.width
        visible: text !== ""
        text: section.model.historyNote
        font: Theme.control
        color: Theme.text2
        wrapMode: Text.Wrap
    }

    Row {
        id: charts

        readonly property real chartWidth: Math.floor((width - 2 * spacing) / 3)
        readonly property real labelHeight: Math.max(cpu.labelNeeds, pressure.labelNeeds, swap.labelNeeds)

        width: parent.width
        spacing: 16
        visible: section.model.loaded && section.model.historyNote === ""

        HistoryChart {
            id: cpu

            width: charts.chartWidth
            chart: section.model.cpuChart
            timeTicks: section.model.timeTicks
            labelHeight: charts.labelHeight
            color: Theme.accentLight
            chosen: section.model.causes.chosen
            onPointed: bar => section.model.causes.point(bar)
            onBarChosen: bar => section.model.causes.choose(bar)
        }

        HistoryChart {
            id: pressure

            width: charts.chartWidth
            chart: section.model.pressureChart
            timeTicks: section.model.timeTicks
            labelHeight: charts.labelHeight
            color: Theme.amber
            chosen: section.model.causes.chosen
            onPointed: bar => section.model.causes.point(bar)
            onBarChosen: bar => section.model.causes.choose(bar)
        }

        HistoryChart {
            id: swap

            width: charts.width - 2 * charts.chartWidth - 2 * charts.spacing
            chart: section.model.swapChart
            timeTicks: section.model.timeTicks
            labelHeight: charts.labelHeight
            color: Theme.red
            chosen: section.model.causes.chosen
            onPointed: bar => section.model.causes.point(bar)
            onBarChosen: bar => section.model.causes.choose(bar)
        }
    }

    CausesCard {
        id: causes

        width: parent.width
        visible: charts.visible
        model: section.model.causes
        timeTicks: section.model.timeTicks
        onProcessWanted: groupId => section.model.showProcess(groupId)
    }
}
