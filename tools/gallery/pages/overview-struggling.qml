import QtQuick
import Pacelet

SampleShell {
    content: OverviewView {
        model: samples.overview("struggling")
    }
}
