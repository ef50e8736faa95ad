import QtQuick
import Pacelet

/// The row of the kernel's heat control: what it is doing, not what it costs.
ProcessRow {
    /// A `Tone`.
    required property int tone

    longSubtitle: false
    nameFont: Theme.mono
    cpuColor: Theme.foreground(tone)
    memoryColor: Theme.text3
}
