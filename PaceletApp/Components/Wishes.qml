import QtQml

/// Tells the theme how it is to look. Its work is done when it is made.
QtObject {
    required property bool reducedMotion
    required property bool highContrast

    Component.onCompleted: {
        Theme.reducedMotion = reducedMotion;
        Theme.highContrast = highContrast;
    }
}
