import QtQuick
import Pacelet

ScrollArea {
    id: screen

    required property UsageModel model

    ScreenHeader {
        width: parent.width
        title: "Usage"
    }
}
