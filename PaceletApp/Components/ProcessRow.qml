import QtQuick
import Pacelet

/// One application with its helpers, or one lone process.
ProcessColumns {
    id: row

    /// Empty for a lone process.
    required property string appPath
    required property string symbol
    required property string name
    required property string subtitle
    required property string cpuText
    required property string memoryText
    /// All that the row tells, but for its name.
    required property string spoken
    /// Raw value; empty for none.
    required property string verdictValue
    required property fixLook fix
    /// Stands in the action's place where there is no fix.
    required property string note
    /// A sentence, which may be longer than its line.
    property bool longSubtitle: true
    property font nameFont: Theme.controlMedium
    property color cpuColor: Theme.text
    property color memoryColor: Theme.text2

    signal fixed

    implicitHeight: 56
    Accessible.role: Accessible.Row
    Accessible.name: name
    Accessible.description: spoken

    ProcessIcon {
        id: icon

        anchors.verticalCenter: parent.verticalCenter
        appPath: row.appPath
        symbol: row.symbol
        size: 34
    }

    Column {
        anchors.left: icon.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        ElidedText {
            id: nameText

            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: row.name
            wrapMode: Text.Wrap
            maximumLineCount: 2
            font: row.nameFont
            color: Theme.text
            Accessible.ignored: true
        }

        ElidedText {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            visible: text !== ""
            text: row.subtitle
            // Three lines of text are what a row can hold.
            wrapMode: Text.Wrap
            maximumLineCount: row.narrow && nameText.lineCount === 1 ? 2 : 1
            boundless: row.longSubtitle
            font: Theme.rowSubtitle
            color: Theme.text2
            Accessible.ignored: true
        }
    }

    cpu: Text {
        anchors.right: parent?.right
        anchors.verticalCenter: parent?.verticalCenter
        text: row.cpuText
        font: Theme.figures
        color: row.cpuColor
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    memory: Text {
        anchors.right: parent?.right
        anchors.verticalCenter: parent?.verticalCenter
        text: row.memoryText
        font: Theme.figures
        color: row.memoryColor
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    verdict: VerdictPill {
        anchors.verticalCenter: parent?.verticalCenter
        verdict: row.verdictValue
        Accessible.ignored: true
    }

    action: [
        FixButton {
            id: button

            width: Math.min(implicitWidth, parent?.width ?? 0)
            anchors.verticalCenter: parent?.verticalCenter
            title: row.fix.title
            symbol: row.fix.symbol
            purple: row.fix.purple
            onClicked: row.fixed()
        },
        LeaveNote {
            width: parent?.width ?? 0
            anchors.verticalCenter: parent?.verticalCenter
            visible: !button.visible
            text: row.note
            Accessible.ignored: true
        }
    ]
}
