import QtQuick
import Pacelet

SampleShell {
    width: 1000
    height: 700
    content: OverviewView {
        model: samples.overview("long")
    }
}
