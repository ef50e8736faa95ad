import QtQuick
import Pacelet

/// The whole story of one group: what it is, why it gets busy, what its parts are, what can be done.
Column {
    id: panel

    required property ProcessDetailModel model

    /// Lines of text are no longer than the eye can follow.
    readonly property real textWidth: Math.min(width, 760)

    spacing: 16

    component Words: Label {
        font: Theme.body
        wrapMode: Text.Wrap
        lineHeight: 1.2
    }

    Words {
        width: panel.textWidth
        text: panel.model?.summary ?? ""
        color: Theme.text
    }

    Column {
        width: panel.textWidth
        visible: why.text !== ""
        spacing: 6

        SectionLabel {
            text: qsTr("Why it gets busy")
        }

        Words {
            id: why

            width: parent.width
            text: panel.model?.whyHigh ?? ""
            color: Theme.text2
        }
    }

    Helpers {
        width: panel.textWidth
        label: panel.model?.partsLabel ?? ""
        parts: panel.model?.parts ?? null
    }

    // These are loaded from within a part of another file, so they cannot be bound up front.
    // qmllint disable unqualified
    Loader {
        active: panel.model?.spotlight ?? false
        visible: active
        width: panel.textWidth
        sourceComponent: SpotlightHelp {
            model: panel.model.spotlight
        }
    }

    Loader {
        active: panel.model?.windowServer ?? false
        visible: active
        width: panel.textWidth
        sourceComponent: WindowServerHelp {
            model: panel.model.windowServer
        }
    }

    // qmllint enable unqualified
    FixRow {
        width: panel.width
        visible: panel.model?.hasFixes ?? false
        fixes: panel.model?.fixes ?? null
        onPerformed: fix => panel.model.perform(fix)
    }

    LinkButton {
        visible: panel.model?.hasGuide ?? false
        text: qsTr("Read the full guide")
        symbol: "arrow.up.right"
        onClicked: panel.model.openGuide()
    }
}
