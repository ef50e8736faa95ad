import QtQuick
import QtQuick.Templates as T
import Pacelet

/// A sentence that leads to where it is told at length.
T.AbstractButton {
    id: link

    implicitWidth: Math.ceil(label.implicitWidth)
    implicitHeight: Math.ceil(label.implicitHeight) + 2
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Link
    Accessible.name: text
    Keys.onReturnPressed: link.clicked()
    Keys.onEnterPressed: link.clicked()

    contentItem: ElidedText {
        id: label

        text: link.text
        font.family: Theme.control.family
        font.pointSize: Theme.control.pointSize
        font.underline: link.hovered
        color: link.hovered ? Theme.text2 : Theme.text3
        Accessible.ignored: true
    }

    background: Item {
        FocusRing {
            visible: link.visualFocus
            around: 4
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
