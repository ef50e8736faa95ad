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

    Image {
        id: picture

        readonly property int pixels: Math.round(icon.size * Screen.devicePixelRatio)

        readonly property bool missing: status === Image.Error || status === Image.Ready && implicitWidth <= 1

        anchors.fill: parent
        sourceSize.width: pixels
        sourceSize.height: pixels
        source: icon.appPath === "" ? "" : "image://appicon/" + encodeURIComponent(icon.appPath)
        fillMode: Image.PreserveAspectFit
        Accessible.ignored: true
    }

    IconTile {
        // Nothing flashes while the icon is on its way.
        visible: icon.appPath === "" || picture.missing
        size: icon.size
        symbol: visible ? icon.symbol : ""
    }
}
