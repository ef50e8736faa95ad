import QtQuick
import Pacelet

/// The main window around a screen, with names and counts to look at.
RootView {
    width: 1200
    height: 860
    current: 0
    ready: true
    screens: ListModel {
        ListElement {
            title: "Overview"
            symbol: "square.grid.2x2"
            count: ""
        }
        ListElement {
            title: "Processes"
            symbol: "waveform.path.ecg"
            count: "128"
        }
        ListElement {
            title: "Background Items"
            symbol: "square.stack.3d.up"
            count: "41"
        }
        ListElement {
            title: "Internet"
            symbol: "wifi"
            count: ""
        }
        ListElement {
            title: "Usage"
            symbol: "chart.xyaxis.line"
            count: ""
        }
    }
    content: null
}
