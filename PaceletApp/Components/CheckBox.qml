import QtQuick
import QtQuick.Templates as T

/// A box to tick, with its caption.
T.CheckBox {
    id: box

    implicitWidth: Math.ceil(leftPadding + contentItem.implicitWidth + rightPadding)
    implicitHeight: Math.max(18, Math.ceil(contentItem.implicitHeight))
    leftPadding: indicator.width + (text === "" ? 0 : 9)
    font: Theme.control
    opacity: enabled ? 1 : 0.45
    Accessible.name: text

    indicator: Box {
        y: Math.round((box.height - height) / 2)
        width: 16
        height: 16
        radius: 5
        fill: box.checked ? box.hovered ? Theme.buttonHover : Theme.button : Theme.raised
        outline: box.checked ? "transparent" : box.hovered ? Theme.text2 : Theme.scrollHandleHover

        Symbol {
            anchors.centerIn: parent
            visible: box.checked
            name: "checkmark"
            color: Theme.textOnAccent
            size: 12
        }

        FocusRing {
            visible: box.visualFocus
            around: 5
        }
    }

    contentItem: Text {
        text: box.text
        font: box.font
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
