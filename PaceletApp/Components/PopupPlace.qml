import QtQuick

/// Makes a popup when it is first wanted, and keeps it: on its way out it is still there.
Loader {
    property bool wanted: false

    active: false
    onWantedChanged: {
        if (wanted) {
            active = true;
        }
    }
}
