import QtQuick

/// The icon of an installed application, or a question mark.
Item {
    id: icon

    /// Where the application would be; empty for an unknown one.
    required property string appPath

    implicitWidth: 24
    implicitHeight: 24

    Image {
        id: picture

        readonly property int pixels: Math.round(24 * Screen.devicePixelRatio)
        // An application without an icon is one transparent pixel.
        readonly property bool missing: status === Image.Error || status === Image.Ready && implicitWidth <= 1

        anchors.fill: parent
        sourceSize.width: pixels
        sourceSize.height: pixels
        source: icon.appPath === "" ? "" : "image://appicon/" + encodeURIComponent(icon.appPath)
        fillMode: Image.PreserveAspectFit
        Accessible.ignored: true
    }

    Symbol {
        anchors.centerIn: parent
        visible: icon.appPath === "" || picture.missing
        name: visible ? "questionmark.app" : ""
        color: Theme.text3
        size: 18
    }
}
