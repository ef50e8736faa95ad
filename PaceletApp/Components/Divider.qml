import QtQuick

/// A line of whole device pixels, one point thick or a little less.
Box {
    readonly property real thickness: Math.max(1, Math.floor(Screen.devicePixelRatio)) / Screen.devicePixelRatio

    implicitWidth: thickness
    implicitHeight: thickness
    fill: Theme.line
}
