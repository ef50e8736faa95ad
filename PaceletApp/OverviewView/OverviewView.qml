import QtQuick
import Pacelet

/// The first screen: the answer in one card, and what it rests on.
ScrollArea {
    id: view

    required property OverviewModel model

    spacing: 18

    Header {
        width: parent.width
        badge: view.model.badge
    }

    HeroCard {
        width: parent.width
        look: view.model.hero
        earlier: view.model.earlier
        onEarlierWanted: view.model.showEarlier()
        onFixed: view.model.fixHero()
    }

    MoreCauses {
        width: parent.width
        label: view.model.moreLabel
        causes: view.model.causes
        onFixed: row => view.model.fixCause(row)
    }

    SignalsRow {
        width: parent.width
        look: view.model.readings
    }

    TopTable {
        width: parent.width
        processes: view.model.processes
        onAllProcesses: view.model.showAllProcesses()
        onFixed: groupId => view.model.fixProcess(groupId)
    }
}
