pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T

/// One choice out of a few, side by side in equal parts.
Item {
    id: control

    /// Captions, in order.
    required property list<string> options
    property int current: 0
    /// What is chosen here, for those who cannot see it.
    property string title

    signal chosen(int index)

    readonly property real margin: 3
    readonly property real partWidth: (width - 2 * margin) / Math.max(1, options.length)

    implicitWidth: 170
    implicitHeight: 34
    activeFocusOnTab: true
    Accessible.role: Accessible.PageTabList
    Accessible.name: title
    Accessible.description: options[current] ?? ""
    Keys.onLeftPressed: chosen(Math.max(0, current - 1))
    Keys.onRightPressed: chosen(Math.min(options.length - 1, current + 1))

    Box {
        anchors.fill: parent
        radius: 9
        fill: Theme.card
        outline: Theme.line

        FocusRing {
            // The pointer never gives it the focus.
            visible: control.activeFocus
        }
    }

    Item {
        anchors.fill: parent
        anchors.margins: control.margin

        Box {
            x: control.current * control.partWidth
            width: control.partWidth
            height: parent.height
            radius: 6
            fill: Theme.accentBG
            outline: Qt.alpha(Theme.accent, 0.5)

            Behavior on x {
                NumberAnimation {
                    duration: Theme.quick
                    easing.type: Easing.OutCubic
                }
            }
        }

        Repeater {
            model: control.options

            T.AbstractButton {
                id: part

                required property int index
                required property string modelData

                readonly property bool selected: index === control.current

                x: index * control.partWidth
                width: control.partWidth
                height: parent.height
                focusPolicy: Qt.NoFocus
                text: modelData
                Accessible.role: Accessible.PageTab
                Accessible.name: text
                Accessible.selectable: true
                Accessible.selected: selected
                onClicked: control.chosen(index)

                contentItem: Text {
                    text: part.text
                    font: Theme.chip
                    color: part.selected || part.hovered ? Theme.text : Theme.text2
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                    textFormat: Text.PlainText
                    Accessible.ignored: true
                }

                HoverHandler {
                    cursorShape: Qt.PointingHandCursor
                }
            }
        }
    }
}
