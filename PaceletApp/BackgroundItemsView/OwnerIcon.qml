import QtQuick

/// The icon of an installed application, or a question mark.
AppIcon {
    id: icon

    size: 24

    Symbol {
        anchors.centerIn: parent
        visible: icon.missing
        name: visible ? "questionmark.app" : ""
        color: Theme.text3
        size: 18
    }
}
