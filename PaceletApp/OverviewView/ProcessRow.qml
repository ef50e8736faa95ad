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
    /// Raw value; empty for none.
    required property string verdictValue
    required property fixLook fix
    /// Stands in the action's place where there is no fix.
    required property string note
    property font nameFont: Theme.controlMedium
    property color cpuColor: Theme.text
    property color memoryColor: Theme.text2

    signal fixed

    implicitHeight: 56
    Accessible.role: Accessible.Row
    Accessible.name: name

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
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: row.name
            font: row.nameFont
            color: Theme.text
        }

        ElidedText {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            visible: text !== ""
            text: row.subtitle
            font: Theme.rowSubtitle
            color: Theme.text2
        }
    }

    cpu: Text {
        anchors.right: parent?.right
        anchors.verticalCenter: parent?.verticalCenter
        text: row.cpuText
        font: Theme.figures
        color: row.cpuColor
        textFormat: Text.PlainText
    }

    memory: Text {
        anchors.right: parent?.right
        anchors.verticalCenter: parent?.verticalCenter
        text: row.memoryText
        font: Theme.figures
        color: row.memoryColor
        textFormat: Text.PlainText
    }

    verdict: VerdictPill {
        anchors.verticalCenter: parent?.verticalCenter
        verdict: row.verdictValue
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
        }
    ]
}
