import QtQuick

/// The program's own mark.
Image {
    property real size: 34

    readonly property int pixels: Math.round(size * Screen.devicePixelRatio)

    sourceSize.width: pixels
    sourceSize.height: pixels
    width: size
    height: size
    source: "qrc:/icons/pacelet.svg"
    Accessible.ignored: true
}
