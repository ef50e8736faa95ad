import QtQuick
import Pacelet

/// One background item: what it is, whom it runs for, whether it runs, and what to think of it.
Item {
    id: row

    required property string title
    required property string label
    required property string scope
    required property bool running
    required property string figures
    /// Raw value; empty for none.
    required property string verdict

    readonly property real gap: 12

    implicitHeight: words.height + 20
    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.description: label + ", " + scope + ", " + (running ? qsTr("Running %1").arg(figures) : qsTr("Not running"))

    Column {
        id: words

        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.right: scopeColumn.left
        anchors.rightMargin: row.gap
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        ElidedText {
            width: parent.width
            text: row.title
            wrapMode: Text.Wrap
            maximumLineCount: 2
            horizontalAlignment: Text.AlignLeft
            font: Theme.controlMedium
            color: Theme.text
            Accessible.ignored: true
        }

        ElidedText {
            width: parent.width
            text: row.label
            horizontalAlignment: Text.AlignLeft
            font: Theme.monoNote
            color: Theme.text3
            boundless: true
            Accessible.ignored: true
        }
    }

    ElidedText {
        id: scopeColumn

        anchors.right: stateColumn.left
        anchors.rightMargin: row.gap
        anchors.verticalCenter: parent.verticalCenter
        width: 150
        text: row.scope
        horizontalAlignment: Text.AlignLeft
        font: Theme.note
        color: Theme.text2
        Accessible.ignored: true
    }

    Item {
        id: stateColumn

        anchors.right: verdictColumn.left
        anchors.rightMargin: row.gap
        anchors.verticalCenter: parent.verticalCenter
        width: 190
        height: pill.height

        Pill {
            id: pill

            visible: row.running
            text: qsTr("Running")
            fg: Theme.green
            bg: Theme.greenBG
            Accessible.ignored: true
        }

        ElidedText {
            x: pill.width + 6
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - x
            visible: row.running
            text: row.figures
            font: Theme.smallFigures
            color: Theme.text2
            Accessible.ignored: true
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: !row.running
            text: qsTr("Not running")
            font: Theme.note
            color: Theme.text3
            Accessible.ignored: true
        }
    }

    Item {
        id: verdictColumn

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 110
        height: pill.height

        VerdictPill {
            anchors.verticalCenter: parent.verticalCenter
            verdict: row.verdict
        }
    }
}
