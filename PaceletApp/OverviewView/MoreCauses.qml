pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// The causes behind the first.
Column {
    id: more

    /// "And 2 more causes"; empty when there are none.
    required property string label
    /// Roles headline, grave, fix and note.
    required property var causes

    signal fixed(int row)

    visible: label !== ""
    spacing: 10

    Heading {
        text: more.label
        font: Theme.controlStrong
        color: Theme.text2
    }

    Card {
        width: parent.width
        padding: 0

        Column {
            x: 18
            width: parent.width - 36

            Repeater {
                model: more.causes

                Item {
                    id: entry

                    required property int index
                    required property string headline
                    required property bool grave
                    required property fixLook fix
                    required property string note

                    width: parent?.width ?? 0
                    height: row.implicitHeight

                    Divider {
                        width: parent.width
                        visible: entry.index > 0
                    }

                    CauseRow {
                        id: row

                        anchors.fill: parent
                        headline: entry.headline
                        grave: entry.grave
                        fix: entry.fix
                        note: entry.note
                        onFixed: more.fixed(entry.index)
                    }
                }
            }
        }
    }
}
