import QtQuick
import QtQuick.Templates as T

/// A link that leads out of the program.
T.AbstractButton {
    id: link

    property string symbol

    implicitWidth: row.width
    implicitHeight: row.height + 4
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Link
    Accessible.name: text
    Keys.onReturnPressed: link.clicked()
    Keys.onEnterPressed: link.clicked()

    contentItem: Item {
        Row {
            id: row

            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            Text {
                text: link.text
                font.family: Theme.controlMedium.family
                font.pointSize: Theme.controlMedium.pointSize
                font.weight: Theme.controlMedium.weight
                font.underline: link.hovered
                color: Theme.accentLight
                textFormat: Text.PlainText
                Accessible.ignored: true
            }

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: link.symbol
                color: Theme.accentLight
                size: 12
            }
        }
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
