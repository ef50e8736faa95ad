import QtQuick
import Pacelet

SampleShell {
    ready: false
}
