import QtQuick
import QtQuick.Templates as T

/// A scroll bar that shows while something moves or the pointer is over it.
T.ScrollBar {
    id: bar

    implicitWidth: 12
    padding: 3
    minimumSize: 0.06
    visible: size < 1

    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        color: bar.pressed || bar.hovered ? Theme.scrollHandleHover : Theme.scrollHandle
        opacity: bar.active || bar.hovered ? 1 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.settle
            }
        }
    }
}
