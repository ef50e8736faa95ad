import QtQuick

/// The ground of everything that floats over the window.
Rectangle {
    radius: 14
    color: Theme.raised
    border.color: Theme.controlBorder

    Shadow {
        radius: 14
        spread: 24
    }
}
