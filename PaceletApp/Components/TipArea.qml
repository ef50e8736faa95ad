import QtQuick

/// Shows a tip while the pointer rests on it. Takes no clicks, and makes nothing until it is needed.
Item {
    id: area

    property string tip

    HoverHandler {
        enabled: area.tip !== ""
        onHoveredChanged: {
            if (hovered) {
                loader.setSource("Tip.qml", {
                    tip: area.tip,
                    about: area
                });
            } else {
                loader.source = "";
            }
        }
    }

    Loader {
        id: loader
    }
}
