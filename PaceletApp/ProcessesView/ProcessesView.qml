import QtQuick
import Pacelet

ScrollArea {
    id: screen

    required property ProcessesModel model

    ScreenHeader {
        width: parent.width
        title: "Processes"
    }
}
