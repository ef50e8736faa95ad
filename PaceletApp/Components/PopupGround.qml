import QtQuick

/// The ground of everything that floats over the window.
Box {
    radius: 14
    fill: Theme.raised
    outline: Theme.controlBorder

    Shadow {
        radius: 14
        spread: 24
    }
}
