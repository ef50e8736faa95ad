import QtQuick

/// The heading of the overview.
ScreenHeader {
    id: header

    required property string liveText
    required property bool paused
    required property bool checked

    signal pauseToggled

    title: "Overview"
    subtitle: "Understand what's happening on your Mac."

    LiveBadge {
        text: header.liveText
        paused: header.paused
        checked: header.checked
        onPauseToggled: header.pauseToggled()
    }
}
