import QtQml

/// Tells the theme how much may move. Its work is done when it is made.
QtObject {
    required property bool reduced

    Component.onCompleted: Theme.reducedMotion = reduced
}
