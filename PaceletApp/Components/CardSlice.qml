import QtQuick

/// The part of a card behind one row of a list. The card has its corners and edges where its first
/// and its last row are.
Item {
    id: slice

    property bool first: false
    property bool last: false
    property color fill: Theme.card
    property real radius: 12

    clip: !first || !last

    Box {
        readonly property real above: slice.first ? 0 : 2 * slice.radius
        readonly property real below: slice.last ? 0 : 2 * slice.radius

        y: -above
        width: parent.width
        height: parent.height + above + below
        radius: slice.radius
        fill: slice.fill
        outline: Theme.line
    }

    Divider {
        anchors.bottom: parent.bottom
        width: parent.width
        visible: !slice.last
    }
}
