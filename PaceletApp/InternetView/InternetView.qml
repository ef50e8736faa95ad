import QtQuick
import Pacelet

/// Whether slowness comes from the machine, the Wi-Fi or the internet line.
ScrollArea {
    id: view

    required property InternetModel model

    spacing: 18

    ScreenHeader {
        width: parent.width
        title: qsTr("Internet")
        subtitle: qsTr("Find out if it's your Mac, your Wi-Fi, or your internet line.")
    }

    FindingsCard {
        width: parent.width
        look: view.model.look
        findings: view.model.findings
        onFixed: row => view.model.fix(row)
    }

    Row {
        id: pair

        readonly property real half: Math.floor((width - spacing) / 2)
        readonly property real tallest: Math.max(link.implicitHeight, speed.implicitHeight)

        width: parent.width
        spacing: 16

        LinkCard {
            id: link

            width: pair.half
            height: pair.tallest
            look: view.model.look
            readings: view.model.linkRows
        }

        SpeedCard {
            id: speed

            width: pair.width - pair.half - pair.spacing
            height: pair.tallest
            look: view.model.look
            readings: view.model.speedRows
            onAsked: view.model.askTest()
        }
    }

    AppsCard {
        width: parent.width
        look: view.model.look
        apps: view.model.apps
    }
}
