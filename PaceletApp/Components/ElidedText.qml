import QtQuick

/// One line of text that ends in an ellipsis where it does not fit, and then tells itself whole in a
/// tip.
Text {
    id: line

    elide: Text.ElideRight
    maximumLineCount: 1
    textFormat: Text.PlainText

    TipArea {
        anchors.fill: parent
        tip: line.truncated ? line.text : ""
    }
}
