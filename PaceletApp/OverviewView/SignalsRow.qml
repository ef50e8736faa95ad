import QtQuick
import Pacelet

/// Load, memory pressure and heat.
Row {
    id: row

    required property readingsLook look

    readonly property real tileWidth: Math.floor((width - 2 * spacing) / 3)

    spacing: 16

    SignalTile {
        width: row.tileWidth
        title: qsTr("CPU load")
        value: row.look.cpuLoad
        caption: qsTr("Across all CPU cores")
        symbol: "cpu"
    }

    SignalTile {
        width: row.tileWidth
        title: qsTr("Memory pressure")
        value: row.look.pressure
        valueColor: Theme.foreground(row.look.pressureTone)
        caption: row.look.memoryInstalled
        symbol: "memorychip"
    }

    SignalTile {
        width: row.width - 2 * row.tileWidth - 2 * row.spacing
        title: qsTr("Thermal state")
        value: row.look.thermal
        valueColor: Theme.foreground(row.look.thermalTone)
        caption: row.look.thermalCaption
        symbol: "thermometer.medium"
    }
}
