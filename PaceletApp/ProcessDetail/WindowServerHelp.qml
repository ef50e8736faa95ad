import QtQuick
import Pacelet

/// What makes the window server work, and what helps.
Column {
    id: help

    required property WindowServerHelpModel model

    spacing: 8

    Label {
        bottomPadding: 6
        visible: text !== ""
        text: help.model.displays
        font: Theme.control
        color: Theme.text
    }

    SectionLabel {
        text: qsTr("Windows open right now")
    }

    FigureTable {
        width: parent.width
        visible: help.model.hasWindows
        rows: help.model.windows
        firstWidth: 100
    }

    FixRow {
        width: parent.width
        topPadding: 6
        fixes: help.model.fixes
        onPerformed: fix => help.model.perform(fix)
    }
}
