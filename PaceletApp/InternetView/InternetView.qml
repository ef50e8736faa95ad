import QtQuick
import Pacelet

ScrollArea {
    id: screen

    required property InternetModel model

    ScreenHeader {
        width: parent.width
        title: "Internet"
    }
}
