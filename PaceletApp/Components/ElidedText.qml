import QtQuick

/// One line of text that ends in an ellipsis where it does not fit, and then tells itself whole in a
/// tip.
Label {
    id: line

    /// It has no bounds, like an address or a whole sentence: nobody expects it to fit.
    property bool boundless: false

    elide: Text.ElideRight
    maximumLineCount: 1

    TipArea {
        anchors.fill: parent
        tip: line.truncated ? line.text : ""
    }
}
