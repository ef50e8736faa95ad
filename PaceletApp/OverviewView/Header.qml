import QtQuick

/// The heading of the overview.
ScreenHeader {
    id: header

    required property string liveText
    required property bool paused

    signal pauseToggled

    title: "Overview"
    subtitle: "Understand what's happening on your Mac."

    LiveBadge {
        text: header.liveText
        paused: header.paused
        onPauseToggled: header.pauseToggled()
    }
}
