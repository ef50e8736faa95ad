import QtQuick

/// The ring around the control that the keyboard works on.
Box {
    /// Corner radius of what it surrounds.
    property real around: 9

    anchors.fill: parent
    anchors.margins: -3
    radius: around + 3
    outlineWidth: 2
    outline: Theme.accentLight
}
