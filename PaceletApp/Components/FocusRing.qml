import QtQuick

/// The ring around the control that the keyboard works on.
Rectangle {
    /// Corner radius of what it surrounds.
    property real around: 9

    anchors.fill: parent
    anchors.margins: -3
    radius: around + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.accentLight
}
