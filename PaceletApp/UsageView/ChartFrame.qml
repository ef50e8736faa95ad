pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// The axes of a chart. What stands inside fills the area between them.
Item {
    id: frame

    default property alias content: plot.data
    /// Lists of `chartTick`.
    required property var valueTicks
    required property var timeTicks

    readonly property alias plot: plot
    /// From one mark of the time to the next.
    readonly property real timeStep: timeTicks.length > 1 ? (timeTicks[1].place - timeTicks[0].place) * plot.width : plot.width

    TextMetrics {
        id: longest

        font: Theme.axis
        // The values rise.
        text: frame.valueTicks.length > 0 ? frame.valueTicks[frame.valueTicks.length - 1].text : ""
    }

    Repeater {
        model: frame.valueTicks.length

        Item {
            id: valueTick

            required property int index

            readonly property chartTick tick: frame.valueTicks[index]

            y: plot.y + Math.round((1 - tick.place) * plot.height)
            width: frame.width

            Text {
                width: plot.x - 8
                anchors.verticalCenter: parent.top
                text: valueTick.tick.text
                font: Theme.axis
                color: Theme.text3
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
            }

            Rectangle {
                x: plot.x
                width: plot.width
                height: 1
                color: Theme.line
            }
        }
    }

    Repeater {
        model: frame.timeTicks.length

        Item {
            id: timeTick

            required property int index

            readonly property chartTick tick: frame.timeTicks[index]

            x: plot.x + Math.round(tick.place * plot.width)
            height: frame.height

            Rectangle {
                y: plot.y
                width: 1
                height: plot.height + 4
                color: Theme.line
            }

            Text {
                x: Math.round(Math.max(-timeTick.tick.place * plot.width, Math.min((1 - timeTick.tick.place) * plot.width - width, -width / 2)))
                anchors.bottom: parent.bottom
                visible: timeTick.index % 2 === 0 || implicitWidth + 4 <= frame.timeStep
                text: timeTick.tick.text
                font: Theme.axis
                color: Theme.text3
                Accessible.ignored: true
            }
        }
    }

    Item {
        id: plot

        x: Math.ceil(longest.advanceWidth) + 8
        y: 7
        width: frame.width - x
        height: frame.height - y - 22
    }
}
