import QtQuick
import Pacelet

/// One figure over the range, a bar for each hour or day. The pointer, or the arrow keys, tell of a
/// bar.
Card {
    id: card

    required property barChart chart
    required property var timeTicks
    required property color color

    // Where room is scarce, the label needs it more.
    padding: width < 250 ? 18 : 24
    z: bars.marked >= 0 ? 1 : 0

    Column {
        width: parent.width
        spacing: 8

        SectionLabel {
            width: parent.width
            text: card.chart.label
            elide: Text.ElideRight
        }

        ChartFrame {
            id: frame

            width: parent.width
            height: 120
            valueTicks: card.chart.valueTicks
            timeTicks: card.timeTicks
            activeFocusOnTab: true
            Accessible.role: Accessible.Chart
            Accessible.name: card.chart.label
            Accessible.description: bars.description
            Accessible.focusable: true
            Keys.onLeftPressed: bars.moveMark(-1)
            Keys.onRightPressed: bars.moveMark(1)
            onActiveFocusChanged: {
                if (!activeFocus) {
                    bars.marked = -1;
                }
            }

            BarPlot {
                id: bars

                objectName: card.chart.label
                anchors.fill: parent
                chart: card.chart
                color: card.color

                HoverHandler {
                    onPointChanged: bars.marked = hovered ? bars.barAt(point.position.x) : -1
                    onHoveredChanged: {
                        if (!hovered) {
                            bars.marked = -1;
                        }
                    }
                }
            }

            FocusRing {
                visible: frame.activeFocus
                around: 4
            }

            BarTip {
                readonly property real leftmost: -frame.plot.x - card.padding / 2
                readonly property real rightmost: bars.width + card.padding / 2 - width

                x: Math.round(Math.max(leftmost, Math.min(rightmost, bars.tip.x - width / 2)))
                y: Math.round(bars.tip.y - height - 6)
                visible: bars.marked >= 0
                value: bars.value
                time: bars.time
            }
        }
    }
}
