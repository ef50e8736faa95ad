import QtQuick
import QtQuick.Templates as T
import Pacelet

/// One cause. Pressed, it leads to its process, if that runs now.
T.AbstractButton {
    id: row

    /// Empty when it does not run.
    required property string groupId
    required property string symbol
    required property int tone
    required property string name
    required property string effect
    required property string stood
    required property string times
    required property string last
    /// All of it in words.
    required property string spoken
    /// How much of each part of the time it took.
    required property var strip
    /// The stretch of the strip that stands out.
    required property real from
    required property real to

    signal opened(string groupId)

    readonly property color toneColor: tone === Tone.Neutral ? Theme.accentLight : Theme.foreground(tone)

    implicitHeight: 58
    enabled: groupId !== ""
    focusPolicy: Qt.StrongFocus
    Accessible.role: enabled ? Accessible.Button : Accessible.StaticText
    Accessible.name: spoken
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()
    onClicked: row.opened(row.groupId)

    background: Rectangle {
        color: row.hovered && row.enabled ? Theme.rowHover : "transparent"

        Divider {
            width: parent.width
        }

        FocusRing {
            anchors.margins: 1
            visible: row.visualFocus
            around: 5
        }
    }

    contentItem: CauseColumns {
        cause: [
            IconTile {
                id: tile

                anchors.verticalCenter: parent?.verticalCenter
                symbol: row.symbol
            },
            Column {
                anchors.left: tile.right
                anchors.leftMargin: 12
                anchors.right: parent?.right
                anchors.verticalCenter: parent?.verticalCenter
                spacing: 2

                ElidedText {
                    width: parent.width
                    text: row.name
                    font: Theme.controlMedium
                    color: Theme.text
                    Accessible.ignored: true
                }

                ElidedText {
                    width: parent.width
                    text: row.effect
                    font: Theme.rowSubtitle
                    color: Theme.text2
                    Accessible.ignored: true
                }
            }
        ]

        strip: StripPlot {
            anchors.verticalCenter: parent?.verticalCenter
            width: parent?.width ?? 0
            height: 16
            shares: row.strip
            color: row.toneColor
            ground: Theme.raised
            from: row.from
            to: row.to
        }

        figures: Column {
            anchors.right: parent?.right
            anchors.verticalCenter: parent?.verticalCenter
            spacing: 2

            Text {
                anchors.right: parent.right
                text: row.stood
                font: Theme.figures
                color: Theme.text
                textFormat: Text.PlainText
                Accessible.ignored: true
            }

            Text {
                anchors.right: parent.right
                text: row.times
                font: Theme.smallFigures
                color: Theme.text2
                textFormat: Text.PlainText
                Accessible.ignored: true
            }
        }

        last: [
            Text {
                anchors.right: arrow.left
                anchors.rightMargin: 10
                anchors.verticalCenter: parent?.verticalCenter
                text: row.last
                font: Theme.smallFigures
                color: Theme.text2
                textFormat: Text.PlainText
                Accessible.ignored: true
            },
            Symbol {
                id: arrow

                anchors.right: parent?.right
                anchors.verticalCenter: parent?.verticalCenter
                opacity: row.enabled ? 1 : 0
                name: "chevron.right"
                color: Theme.text3
                size: 10
            }
        ]
    }

    HoverHandler {
        enabled: row.enabled
        cursorShape: Qt.PointingHandCursor
    }
}
