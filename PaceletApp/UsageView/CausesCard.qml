pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// What slowed the machine down, longest first, under the charts whose range it follows.
Column {
    id: section

    required property CausesModel model
    required property var timeTicks

    signal processWanted(string groupId)

    /// While only pointed at, a bar changes nothing of the page's height: its end would jump away
    /// from under the pointer.
    readonly property bool narrowed: model.stretch !== ""
    property real wholeHeight: 0

    spacing: 12

    Item {
        width: parent.width
        height: 34

        Heading {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("What slowed your Mac")
            font: Theme.sectionTitle
            color: Theme.text
        }

        Label {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== "" && section.model.chosen < 0
            text: section.model.stretch
            font: Theme.control
            color: Theme.text2
        }

        SecondaryButton {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: section.model.chosen >= 0
            text: section.model.stretch
            symbol: "xmark"
            symbolBehind: true
            symbolSize: 10
            Accessible.name: text + ", show the whole range"
            onClicked: section.model.choose(-1)
        }
    }

    Card {
        width: parent.width
        padding: 0

        Item {
            width: parent.width
            height: section.narrowed ? Math.max(section.wholeHeight, list.height) : list.height

            Column {
                id: list

                width: parent.width
                onHeightChanged: {
                    if (!section.narrowed) {
                        section.wholeHeight = height;
                    }
                }

                CauseColumns {
                    id: head

                    width: parent.width
                    height: 34
                    visible: section.model.note === ""
                    Accessible.role: Accessible.Chart
                    Accessible.name: qsTr("When it stood")

                    strip: Repeater {
                        model: section.timeTicks.length

                        Text {
                            required property int index

                            readonly property chartTick tick: section.timeTicks[index]

                            x: Math.round(Math.max(0, Math.min(head.stripWidth - width, tick.place * head.stripWidth - width / 2)))
                            anchors.bottom: parent?.bottom
                            anchors.bottomMargin: 6
                            text: tick.text
                            font: Theme.axis
                            color: Theme.text3
                            Accessible.ignored: true
                        }
                    }

                    figures: Text {
                        anchors.right: parent?.right
                        anchors.bottom: parent?.bottom
                        anchors.bottomMargin: 6
                        text: qsTr("In total")
                        font: Theme.axis
                        color: Theme.text3
                        Accessible.ignored: true
                    }

                    last: Text {
                        anchors.right: parent?.right
                        anchors.rightMargin: 20
                        anchors.bottom: parent?.bottom
                        anchors.bottomMargin: 6
                        text: qsTr("Last")
                        font: Theme.axis
                        color: Theme.text3
                        Accessible.ignored: true
                    }
                }

                Repeater {
                    model: section.model.rows

                    NotedCauseRow {
                        width: parent?.width ?? 0
                        from: section.model.from
                        to: section.model.to
                        onOpened: groupId => section.processWanted(groupId)
                    }
                }

                Item {
                    width: parent.width
                    height: more.height + 24
                    visible: section.model.moreTitle !== ""

                    Divider {
                        width: parent.width
                    }

                    SecondaryButton {
                        id: more

                        anchors.centerIn: parent
                        text: section.model.moreTitle
                        onClicked: section.model.showAll()
                    }
                }

                Label {
                    visible: text !== ""
                    width: parent.width
                    leftPadding: 24
                    rightPadding: 24
                    topPadding: 22
                    bottomPadding: 22
                    text: section.model.note
                    font: Theme.control
                    color: Theme.text2
                    wrapMode: Text.Wrap
                }
            }
        }
    }
}
