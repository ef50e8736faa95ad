import QtQuick
import Pacelet

/// What the user may do with a process; nothing at all without a verdict.
Pill {
    /// Raw value of the verdict, or empty.
    property string verdict

    readonly property pillLook look: Looks.verdict(verdict)

    visible: verdict !== ""
    text: look.text
    symbol: look.symbol
    fg: Theme.foreground(look.tone)
    bg: Theme.background(look.tone)
    Accessible.name: look.accessibleName
}
