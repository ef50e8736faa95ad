import QtQuick

/// The titles of the table's columns.
ProcessColumns {
    implicitHeight: 38

    component ColumnTitle: SectionLabel {
        anchors.verticalCenter: parent?.verticalCenter
        font.capitalization: Font.MixedCase
    }

    ColumnTitle {
        text: qsTr("Process")
    }

    cpu: ColumnTitle {
        anchors.right: parent?.right
        text: qsTr("CPU")
    }

    memory: ColumnTitle {
        anchors.right: parent?.right
        text: qsTr("Memory")
    }

    verdict: ColumnTitle {
        text: qsTr("Verdict")
    }

    action: ColumnTitle {
        text: qsTr("Action")
    }
}
