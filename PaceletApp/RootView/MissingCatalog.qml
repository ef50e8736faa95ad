import QtQuick

/// All that can be shown of an installation without its catalog.
Item {
    id: place

    required property string title

    EmptyState {
        anchors.centerIn: parent
        width: Math.min(parent.width - 68, 520)
        symbol: "exclamationmark.triangle"
        title: place.title
    }
}
