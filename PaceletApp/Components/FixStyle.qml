import QtQuick

/// The looks of a fix: the one that matters most, one that acts on a busy program, any other.
StyledButton {
    id: button

    property bool prominent: false
    property bool purple: false

    readonly property bool small: purple && !prominent

    font: prominent ? Theme.controlStrong : small ? Theme.fix : Theme.controlMedium
    labelColor: prominent ? Theme.textOnAccent : small ? Theme.purpleText : Theme.text
    fill: prominent ? Theme.button : small ? Theme.purpleFill : Theme.controlFill
    hoverFill: prominent ? Theme.buttonHover : small ? Qt.lighter(Theme.purpleFill, 1.25) : Theme.controlHover
    pressedFill: prominent ? Qt.alpha(Theme.button, 0.8) : small ? Qt.alpha(Theme.purpleFill, 0.7) : Theme.controlPressed
    outline: prominent ? "transparent" : small ? Theme.purpleBorder : Theme.controlBorder
    radius: small ? 7 : 9
    symbolSize: small ? 12 : 14
    leftPadding: prominent ? 16 : small ? 10 : 14
    rightPadding: leftPadding
    topPadding: small ? 6 : 9
    bottomPadding: topPadding
}
