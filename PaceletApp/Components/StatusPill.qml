import QtQuick
import Pacelet

/// The state of the machine in one word.
Pill {
    /// Raw value of the status.
    property string status

    readonly property pillLook look: Looks.status(status)

    text: look.text
    fg: Theme.foreground(look.tone)
    bg: Theme.background(look.tone)
    Accessible.name: look.accessibleName
}
