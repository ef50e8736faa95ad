import QtQuick
import Pacelet

/// A rounded rectangle with a thin outline: what all surfaces are made of. The software renderer
/// draws its own rounded rectangles on whole pixels only, so at a scale between they are painted.
Rectangle {
    id: box

    property color fill: "transparent"
    property color outline: "transparent"
    property real outlineWidth: outline.a > 0 ? 1 : 0

    readonly property bool painted: Screen.devicePixelRatio % 1 !== 0 && GraphicsInfo.api === GraphicsInfo.Software

    color: painted ? "transparent" : fill
    border.width: painted ? 0 : outlineWidth
    border.color: outline

    BoxPainter {
        z: -1
        anchors.fill: parent
        visible: box.painted
        fill: box.fill
        outline: box.outline
        outlineWidth: box.outlineWidth
        radius: box.radius
    }
}
