import QtQuick
import Pacelet

/// One figure over the range, a bar for each hour or day. The pointer, or the arrow keys, tell of a
/// bar.
Card {
    id: card

    required property barChart chart
    required property var timeTicks
    required property color color
    /// The bar that the list below tells of; -1 for none.
    required property int chosen

    /// A bar is pointed at, by the pointer or the arrow keys; -1 for none.
    signal pointed(int bar)
    /// A bar was clicked, or Return pressed on it; -1 gives up the choice.
    signal barChosen(int bar)

    /// What the label takes, and what it is given: charts side by side stand on one line.
    readonly property real labelNeeds: label.implicitHeight
    property real labelHeight: labelNeeds

    z: bars.marked >= 0 ? 1 : 0

    Column {
        width: parent.width
        spacing: 8

        SectionLabel {
            id: label

            width: parent.width
            height: card.labelHeight
            text: card.chart.label
            wrapMode: Text.Wrap
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
            Keys.onReturnPressed: card.barChosen(bars.marked)
            Keys.onEnterPressed: card.barChosen(bars.marked)
            Keys.onSpacePressed: card.barChosen(bars.marked)
            Keys.onEscapePressed: event => {
                event.accepted = card.chosen >= 0;
                if (event.accepted) {
                    card.barChosen(-1);
                }
            }
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
                chosen: card.chosen
                onMarkedChanged: card.pointed(marked)

                TapHandler {
                    onTapped: point => card.barChosen(bars.barAt(point.position.x))
                }

                HoverHandler {
                    cursorShape: bars.marked >= 0 ? Qt.PointingHandCursor : Qt.ArrowCursor
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
