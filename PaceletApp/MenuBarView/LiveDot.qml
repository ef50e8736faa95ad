import QtQuick

/// A small text of freshness.
Label {
    font: Theme.smallFigures
    color: Theme.text3
}
