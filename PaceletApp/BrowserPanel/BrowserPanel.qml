import QtQuick
import Pacelet

/// The sheet in which the tabs of one browser are cleaned up.
FocusScope {
    id: panel

    required property BrowserPanelModel model

    signal closed

    readonly property bool loaded: model.phase === "loaded"
    readonly property real margin: 28
    /// Where the list of tabs is scrolled to, for when it comes back.
    property int topRow: 0

    implicitWidth: 760
    implicitHeight: loaded ? 620 : page.implicitHeight + 2 * margin
    focus: true

    Loader {
        id: page

        x: panel.margin
        y: panel.margin
        width: panel.width - 2 * panel.margin
        height: panel.loaded ? panel.height - 2 * panel.margin : implicitHeight
        focus: true
        sourceComponent: {
            switch (panel.model.phase) {
            case "primer":
                return primer;
            case "loading":
                return loading;
            case "loaded":
                return tabs;
            default:
                return failure;
            }
        }
    }

    Component {
        id: primer

        BrowserMessage {
            focus: true
            symbol: "hand.raised"
            wordSpacing: spacing
            look: panel.model.primer // qmllint disable unqualified

            SecondaryButton {
                text: qsTr("Not now")
                onClicked: panel.closed() // qmllint disable unqualified
            }

            PrimaryButton {
                focus: true
                text: qsTr("Continue")
                onClicked: panel.model.proceed() // qmllint disable unqualified
            }
        }
    }

    Component {
        id: loading

        Row {
            spacing: 12

            Spinner {
                anchors.verticalCenter: parent.verticalCenter
            }

            Label {
                text: panel.model.loadingText // qmllint disable unqualified
                font: Theme.body
                color: Theme.text2
            }
        }
    }

    Component {
        id: failure

        BrowserMessage {
            focus: true
            spacing: 12
            look: panel.model.failure // qmllint disable unqualified

            SecondaryButton {
                text: qsTr("Close")
                onClicked: panel.closed() // qmllint disable unqualified
            }

            SecondaryButton {
                // qmllint disable unqualified
                visible: panel.model.phase === "notPermitted" && panel.model.setup === ""
                // qmllint enable unqualified
                text: qsTr("Open Automation settings")
                onClicked: panel.model.openAutomationSettings() // qmllint disable unqualified
            }

            SecondaryButton {
                visible: panel.model.setup === "registered" // qmllint disable unqualified
                text: qsTr("Copy folder")
                onClicked: panel.model.copyFolder() // qmllint disable unqualified
            }

            PrimaryButton {
                focus: visible
                visible: panel.model.setup === "unknown" // qmllint disable unqualified
                text: panel.model.setUpText // qmllint disable unqualified
                onClicked: panel.model.setUp() // qmllint disable unqualified
            }

            PrimaryButton {
                focus: visible
                visible: panel.model.setup !== "unknown" // qmllint disable unqualified
                text: qsTr("Try again")
                onClicked: panel.model.load() // qmllint disable unqualified
            }
        }
    }

    Component {
        id: tabs

        BrowserTabs {
            focus: true
            model: panel.model // qmllint disable unqualified
            topRow: panel.topRow // qmllint disable unqualified
            onGone: topRow => panel.topRow = topRow // qmllint disable unqualified
            onClosed: panel.closed() // qmllint disable unqualified
        }
    }
}
