import QtQuick

Transition {
    NumberAnimation {
        property: "opacity"
        to: 0
        duration: Theme.quick
    }
}
