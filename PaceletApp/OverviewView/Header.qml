import QtQuick
import Pacelet

/// The heading of the overview.
ScreenHeader {
    id: header

    required property LiveBadgeModel badge

    title: qsTr("Overview")
    subtitle: qsTr("Understand what's happening on your Mac.")

    LiveBadge {
        model: header.badge
    }
}
