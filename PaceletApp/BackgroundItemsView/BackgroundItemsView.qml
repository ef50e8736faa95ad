import QtQuick
import Pacelet

ScrollArea {
    id: screen

    required property BackgroundItemsModel model

    ScreenHeader {
        width: parent.width
        title: "Background Items"
    }
}
