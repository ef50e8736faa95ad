import QtQuick
import Pacelet

/// The folders that are better left out of the search index.
Column {
    id: help

    required property SpotlightHelpModel model

    spacing: 8

    SectionLabel {
        text: "Folders that keep Spotlight busy"
    }

    Spinner {
        visible: help.model.searching
    }

    Text {
        width: parent.width
        visible: !help.model.searching && help.model.empty
        text: "No big build or virtual machine folders found."
        font: Theme.control
        color: Theme.text2
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }

    FigureTable {
        width: parent.width
        visible: !help.model.empty
        rows: help.model.folders
    }

    Text {
        width: parent.width
        visible: !help.model.empty
        text: "Add these folders under Spotlight Privacy so macOS stops indexing them."
        font: Theme.note
        color: Theme.text3
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
