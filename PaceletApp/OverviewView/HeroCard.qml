import QtQuick
import Pacelet

/// The answer: what slows the machine down right now, and the one thing to do about it.
Card {
    id: hero

    required property heroLook look
    /// What stood earlier, while all is quiet; empty for nothing.
    required property string earlier

    signal fixed
    signal earlierWanted

    readonly property bool finding: look.checked && look.hasFinding

    Item {
        width: parent.width
        height: Math.max(tile.height, words.height)

        Box {
            id: tile

            width: 56
            height: 56
            radius: 14
            fill: hero.finding ? Theme.accentBG : hero.look.checked ? Theme.greenBG : Theme.raised

            Symbol {
                anchors.centerIn: parent
                visible: hero.look.checked
                name: hero.finding ? hero.look.symbol : "checkmark.seal"
                color: hero.finding ? Theme.accentLight : Theme.green
                size: 26
            }

            Spinner {
                anchors.centerIn: parent
                visible: !hero.look.checked
                size: 24
            }
        }

        Column {
            id: words

            anchors.left: tile.right
            anchors.leftMargin: 18
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            Heading {
                width: parent.width
                text: hero.look.checked ? hero.look.headline : qsTr("Checking your Mac…")
                font: Theme.heading
                color: Theme.text
                wrapMode: Text.Wrap
                maximumLineCount: 4
                elide: Text.ElideRight
            }

            Label {
                width: Math.min(parent.width, 760)
                visible: text !== ""
                text: hero.look.detail
                font: Theme.body
                color: Theme.text2
                wrapMode: Text.Wrap
                lineHeight: 1.2
            }

            QuietLink {
                width: Math.min(implicitWidth, parent.width)
                visible: text !== "" && hero.look.checked && !hero.finding
                text: hero.earlier
                onClicked: hero.earlierWanted()
            }

            Item {
                width: parent.width
                height: actions.height + 10
                visible: hero.finding && (hero.look.fix.title !== "" || hero.look.note !== "")

                Row {
                    id: actions

                    anchors.bottom: parent.bottom
                    spacing: 14

                    FixButton {
                        id: button

                        width: Math.min(implicitWidth, words.width)
                        title: hero.look.fix.title
                        symbol: hero.look.fix.symbol
                        purple: hero.look.fix.purple
                        prominent: true
                        onClicked: hero.fixed()
                    }

                    LeaveNote {
                        width: Math.min(implicitWidth, words.width - (button.visible ? button.width + actions.spacing : 0))
                        anchors.verticalCenter: parent.verticalCenter
                        visible: text !== ""
                        text: hero.look.note
                    }
                }
            }
        }
    }
}
