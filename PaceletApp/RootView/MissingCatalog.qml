import QtQuick

/// All that can be shown of an installation without its catalog.
Item {
    EmptyState {
        anchors.centerIn: parent
        width: Math.min(parent.width - 68, 520)
        symbol: "exclamationmark.triangle"
        title: qsTr("Pacelet couldn't load its process list. Reinstall Pacelet.")
    }
}
