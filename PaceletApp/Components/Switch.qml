import QtQuick
import QtQuick.Templates as T

/// A setting that is on or off: its caption at the left, the switch at the right end.
T.Switch {
    id: toggle

    implicitWidth: Math.ceil(contentItem.implicitWidth + rightPadding)
    implicitHeight: Math.max(22, Math.ceil(contentItem.implicitHeight))
    rightPadding: indicator.width + (text === "" ? 0 : 12)
    font: Theme.control
    opacity: enabled ? 1 : 0.45
    Accessible.name: text

    indicator: Box {
        x: toggle.width - width
        y: Math.round((toggle.height - height) / 2)
        width: 36
        height: 20
        radius: 10
        fill: toggle.checked ? Theme.button : Theme.scrollHandle

        Behavior on fill {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        Box {
            x: toggle.checked ? parent.width - width - 2 : 2
            y: 2
            width: 16
            height: 16
            radius: 8
            fill: Theme.textOnAccent

            Behavior on x {
                NumberAnimation {
                    duration: Theme.quick
                    easing.type: Easing.OutCubic
                }
            }
        }

        FocusRing {
            visible: toggle.visualFocus
            around: 10
        }
    }

    contentItem: Text {
        text: toggle.text
        font: toggle.font
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
