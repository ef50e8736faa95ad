import QtQuick
import Pacelet

/// How hard the machine works, and whether it is time for another.
ScrollArea {
    id: screen

    required property UsageModel model

    spacing: 18

    ScreenHeader {
        width: parent.width
        title: "Usage"
        subtitle: "How hard your Mac works, and whether it's time for a new one."
    }

    MacCard {
        width: parent.width
        line: screen.model.macLine
    }

    VerdictCard {
        width: parent.width
        loaded: screen.model.loaded
        lines: screen.model.verdictLines
        note: screen.model.hoursNote
        onFixed: fix => screen.model.fix(fix)
    }

    Row {
        id: live

        readonly property real cardWidth: Math.floor((width - spacing) / 2)
        readonly property real cardHeight: Math.max(load.implicitHeight, memory.implicitHeight)

        width: parent.width
        spacing: 16

        LoadCard {
            id: load

            width: live.cardWidth
            height: live.cardHeight
            figure: screen.model.load
            description: screen.model.loadDescription
            curve: screen.model.loadCurve
        }

        MemoryCard {
            id: memory

            width: live.width - live.cardWidth - live.spacing
            height: live.cardHeight
            look: screen.model.memory
            segments: screen.model.memorySegments
        }
    }

    HistorySection {
        width: parent.width
        model: screen.model
    }
}
