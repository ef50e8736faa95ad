import QtQuick
import QtQuick.Templates as T

/// A field to search by. Escape and the cross empty it.
T.TextField {
    id: field

    property string prompt

    implicitWidth: 280
    implicitHeight: Math.ceil(contentHeight + topPadding + bottomPadding)
    leftPadding: 12 + glyph.width + 8
    rightPadding: cross.visible ? cross.width + 8 : 12
    topPadding: 9
    bottomPadding: 9
    font: Theme.control
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.textOnAccent
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    Accessible.name: prompt
    Keys.onEscapePressed: event => {
        event.accepted = text !== "";
        field.clear();
    }

    background: Box {
        radius: 9
        fill: Theme.card
        outline: field.activeFocus ? Theme.accent : field.hovered ? Theme.controlBorder : Theme.line

        Behavior on outline {
            ColorAnimation {
                duration: Theme.quick
            }
        }
    }

    cursorDelegate: Rectangle {
        visible: parent?.activeFocus ?? false
        width: 1.5
        color: Theme.accentLight
    }

    Symbol {
        id: glyph

        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        color: Theme.text3
        size: 14
    }

    Text {
        x: field.leftPadding
        width: field.width - x - 12
        anchors.verticalCenter: parent.verticalCenter
        visible: field.length === 0 && field.preeditText === ""
        text: field.prompt
        font: field.font
        color: Theme.text3
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    T.AbstractButton {
        id: cross

        anchors.right: parent.right
        height: parent.height
        width: 32
        visible: field.length > 0
        focusPolicy: Qt.NoFocus
        Accessible.name: qsTr("Clear")
        onClicked: {
            field.clear();
            field.forceActiveFocus();
        }

        contentItem: Item {
            Symbol {
                anchors.centerIn: parent
                name: "xmark.circle.fill"
                color: cross.hovered ? Theme.text2 : Theme.text3
                size: 14
            }
        }

        HoverHandler {
            cursorShape: Qt.PointingHandCursor
        }
    }
}
