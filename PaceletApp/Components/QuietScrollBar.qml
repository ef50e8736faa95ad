import QtQuick
import QtQuick.Templates as T

/// A scroll bar that shows while something moves or the pointer is over it, or all the time where
/// nothing else tells that there is more.
T.ScrollBar {
    id: bar

    property bool alwaysSeen: false

    implicitWidth: 12
    implicitHeight: 12
    padding: 3
    minimumSize: 0.06
    visible: size < 1

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed || bar.hovered ? Theme.scrollHandleHover : Theme.scrollHandle
        opacity: bar.alwaysSeen || bar.active || bar.hovered ? 1 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.settle
            }
        }
    }
}
