import QtQuick

/// The row of the kernel's heat control: what it is doing, not what it costs.
ProcessRow {
    /// As in `PillLook`.
    required property string tone

    longSubtitle: false
    nameFont: Theme.mono
    cpuColor: Theme.foreground(tone)
    memoryColor: Theme.text3
}
