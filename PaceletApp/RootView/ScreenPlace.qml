import QtQuick
import Pacelet

/// The screen on show. Only that one lives, and its file is read when it is first shown.
Item {
    id: place

    required property RootModel model

    function show() {
        screen.setSource(place.model.screenFile, {
            model: place.model.screenModel
        });
    }

    Component.onCompleted: show()

    Loader {
        id: screen

        anchors.fill: parent
        // Of a screen that is on its way out nothing is heard or seen.
        focus: true
    }

    Connections {
        target: place.model

        function onScreenChanged() {
            place.show();
        }
    }
}
