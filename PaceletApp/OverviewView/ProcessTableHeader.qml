import QtQuick

/// The titles of the table's columns.
ProcessColumns {
    implicitHeight: 38

    component ColumnTitle: SectionLabel {
        anchors.verticalCenter: parent?.verticalCenter
        font.capitalization: Font.MixedCase
    }

    ColumnTitle {
        text: "Process"
    }

    cpu: ColumnTitle {
        anchors.right: parent?.right
        text: "CPU"
    }

    memory: ColumnTitle {
        anchors.right: parent?.right
        text: "Memory"
    }

    verdict: ColumnTitle {
        text: "Verdict"
    }

    action: ColumnTitle {
        text: "Action"
    }
}
