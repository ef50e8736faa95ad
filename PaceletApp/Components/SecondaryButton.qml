import QtQuick

/// The button of anything else.
StyledButton {
    font: Theme.controlMedium
    leftPadding: 14
    rightPadding: 14
    topPadding: 9
    bottomPadding: 9
}
