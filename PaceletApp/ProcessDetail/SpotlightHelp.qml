import QtQuick
import Pacelet

/// The folders that are better left out of the search index.
Column {
    id: help

    required property SpotlightHelpModel model

    spacing: 8

    SectionLabel {
        text: qsTr("Folders that keep Spotlight busy")
    }

    Spinner {
        visible: help.model.searching
    }

    Label {
        width: parent.width
        visible: !help.model.searching && help.model.empty
        text: qsTr("No big build or virtual machine folders found.")
        font: Theme.control
        color: Theme.text2
        wrapMode: Text.Wrap
    }

    FigureTable {
        width: parent.width
        visible: !help.model.empty
        rows: help.model.folders
    }

    Label {
        width: parent.width
        visible: !help.model.empty
        text: qsTr("Add these folders under Spotlight Privacy so macOS stops indexing them.")
        font: Theme.note
        color: Theme.text3
        wrapMode: Text.Wrap
    }
}
