pragma ComponentBehavior: Bound
import QtQuick
import Pacelet

/// Measured figures, each with its name.
Column {
    id: rows

    /// Roles label, value and tone.
    required property var readings

    spacing: 10

    Repeater {
        model: rows.readings

        Item {
            id: reading

            required property string label
            required property string value
            required property int tone

            width: rows.width
            height: Math.max(name.height, figure.height)
            Accessible.role: Accessible.StaticText
            Accessible.name: label + ", " + value

            Text {
                id: name

                text: reading.label
                font: Theme.control
                color: Theme.text2
                textFormat: Text.PlainText
                Accessible.ignored: true
            }

            ElidedText {
                id: figure

                anchors.left: name.right
                anchors.leftMargin: 16
                anchors.right: parent.right
                anchors.baseline: name.baseline
                text: reading.value
                wrapMode: Text.Wrap
                maximumLineCount: 2
                font: Theme.figures
                color: reading.tone === Tone.None ? Theme.text : Theme.foreground(reading.tone)
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
            }
        }
    }
}
