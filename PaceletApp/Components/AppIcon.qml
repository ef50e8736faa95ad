import QtQuick

/// The icon of the application that stands at a path.
Image {
    /// Empty for none.
    required property string appPath
    property real size: 34

    readonly property int pixels: Math.round(size * Screen.devicePixelRatio)
    /// There is no such application, or it has no icon: that is a picture of one pixel.
    readonly property bool missing: appPath === "" || status === Image.Error || status === Image.Ready && implicitWidth <= 1

    width: size
    height: size
    sourceSize.width: pixels
    sourceSize.height: pixels
    source: appPath === "" ? "" : "image://appicon/" + encodeURIComponent(appPath)
    fillMode: Image.PreserveAspectFit
    Accessible.ignored: true
}
