import QtQuick
import Pacelet

/// How hard the machine works, and whether it is time for another.
ScrollArea {
    id: screen

    required property UsageModel model

    /// Until the causes that the user came for are in view: the page takes its height as it is laid
    /// out.
    property bool seeking: model.opensAtCauses

    spacing: 18
    onMovementStarted: seeking = false
    onContentHeightChanged: {
        if (screen.seeking && screen.model.loaded) {
            screen.reveal(history.causes);
        }
    }

    Timer {
        running: screen.seeking && screen.model.loaded
        interval: 500
        onTriggered: screen.seeking = false
    }

    ScreenHeader {
        width: parent.width
        title: qsTr("Usage")
        subtitle: qsTr("How hard your Mac works, and whether it's time for a new one.")
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
        id: history

        width: parent.width
        model: screen.model
    }
}
