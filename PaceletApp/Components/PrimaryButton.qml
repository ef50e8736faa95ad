import QtQuick

/// The button of the one thing to do.
StyledButton {
    font: Theme.controlStrong
    labelColor: Theme.textOnAccent
    fill: Theme.button
    hoverFill: Theme.buttonHover
    pressedFill: Qt.alpha(Theme.button, 0.8)
    outline: "transparent"
    leftPadding: 16
    rightPadding: 16
    topPadding: 9
    bottomPadding: 9
}
