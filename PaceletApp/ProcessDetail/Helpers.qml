import QtQuick
import Pacelet

/// The busiest processes of an application.
Column {
    id: helpers

    required property string label
    /// Roles name, first and second.
    required property var parts

    visible: label !== ""
    spacing: 8

    SectionLabel {
        text: helpers.label
    }

    FigureTable {
        width: parent.width
        rows: helpers.parts
        firstWidth: 60
        secondWidth: 80
    }
}
