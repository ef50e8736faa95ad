import QtQuick

/// A small text of freshness.
Text {
    font: Theme.smallFigures
    color: Theme.text3
    textFormat: Text.PlainText
}
