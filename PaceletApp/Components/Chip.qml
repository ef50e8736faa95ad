import QtQuick
import QtQuick.Templates as T

/// A filter that is on or off.
T.RadioButton {
    id: chip

    property bool selected: false

    implicitWidth: Math.ceil(label.implicitWidth) + 24
    implicitHeight: Math.ceil(label.implicitHeight) + 12
    focusPolicy: Qt.StrongFocus
    checked: selected
    indicator: null
    Accessible.name: text
    Keys.onReturnPressed: chip.clicked()
    Keys.onEnterPressed: chip.clicked()

    contentItem: Text {
        id: label

        text: chip.text
        font: Theme.chip
        color: chip.selected || chip.hovered ? Theme.text : Theme.text2
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    background: Box {
        radius: height / 2
        fill: chip.selected ? Theme.accentBG : chip.down ? Theme.raised : Theme.card
        outline: chip.selected ? Qt.alpha(Theme.accent, 0.5) : chip.hovered ? Theme.controlBorder : Theme.line

        FocusRing {
            visible: chip.visualFocus
            around: parent.radius
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
