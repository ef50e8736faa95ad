import QtQuick
import Pacelet

SampleShell {
    content: OverviewView {
        model: samples.overview("struggling")
    }
    toast: "Google Chrome is still running"
    confirming: true
    confirmTitle: "Quit Google Chrome?"
    confirmMessage: "Google Chrome may ask you to save your work first."
    confirmButton: "Quit Google Chrome"
}
