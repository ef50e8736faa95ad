import QtQuick
import QtQuick.Templates as T

/// The make of all push buttons: a glyph and a title on a rounded ground. A title that is too long
/// for its place takes a second line.
T.Button {
    id: button

    property string symbol
    property bool symbolBehind: false
    property color labelColor: Theme.text
    property color fill: Theme.controlFill
    property color hoverFill: Theme.controlHover
    property color pressedFill: Theme.controlPressed
    property color outline: Theme.controlBorder
    property real radius: 9
    property real symbolSize: 14

    readonly property real besideLabel: symbol === "" ? 0 : glyph.width + (text === "" ? 0 : row.spacing)

    implicitWidth: Math.ceil(leftPadding + besideLabel + label.implicitWidth + rightPadding)
    implicitHeight: Math.ceil(topPadding + label.implicitHeight + bottomPadding)
    opacity: enabled ? 1 : 0.45
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: 6
            layoutDirection: button.symbolBehind ? Qt.RightToLeft : Qt.LeftToRight

            Symbol {
                id: glyph

                anchors.verticalCenter: parent.verticalCenter
                visible: button.symbol !== ""
                name: button.symbol
                color: button.labelColor
                size: button.symbolSize
            }

            ElidedText {
                id: label

                width: Math.min(Math.ceil(implicitWidth), Math.max(0, button.availableWidth - button.besideLabel))
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                text: button.text
                wrapMode: Text.Wrap
                maximumLineCount: 2
                font: button.font
                color: button.labelColor
                Accessible.ignored: true
            }
        }
    }

    background: Box {
        radius: button.radius
        fill: button.down ? button.pressedFill : button.hovered ? button.hoverFill : button.fill
        outline: button.outline

        Behavior on fill {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        FocusRing {
            visible: button.visualFocus
            around: button.radius
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
