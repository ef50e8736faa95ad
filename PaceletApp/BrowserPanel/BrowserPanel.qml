import QtQuick
import Pacelet

/// The content of the sheet, with its margins.
FocusScope {
    id: panel

    required property BrowserPanelModel model

    signal closed

    implicitWidth: 760
    implicitHeight: 620
}
