import QtQuick

/// The icon of an application, or a tile with a glyph for what is none and for one without an icon.
Item {
    id: icon

    /// Where the application stands; empty for a lone process.
    property string appPath
    property string symbol: "gearshape"
    property real size: 34

    implicitWidth: size
    implicitHeight: size

    AppIcon {
        id: picture

        appPath: icon.appPath
        size: icon.size
    }

    IconTile {
        // Nothing flashes while the icon is on its way.
        visible: picture.missing
        size: icon.size
        symbol: visible ? icon.symbol : ""
    }
}
