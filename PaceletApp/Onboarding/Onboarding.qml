import QtQuick
import Pacelet

/// The panel of the first run: what the program is for, and one choice. Return is "Get started",
/// wherever the focus stands.
FocusScope {
    id: panel

    required property OnboardingModel model

    signal done

    readonly property real inset: 32

    component Point: Row {
        id: point

        required property string symbol
        required property string text

        width: parent?.width ?? 0

        Item {
            width: 22
            height: words.height

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: point.symbol
                color: Theme.accentLight
                size: 18
            }
        }

        Label {
            id: words

            leftPadding: 12
            width: point.width - 22
            text: point.text
            font: Theme.lead
            color: Theme.text
            wrapMode: Text.Wrap
        }
    }

    function finish() {
        model.finish();
        done();
    }

    focus: true
    implicitWidth: 520
    implicitHeight: column.height + 2 * inset
    Accessible.role: Accessible.Dialog
    Accessible.name: title.text
    Keys.onReturnPressed: finish()
    Keys.onEnterPressed: finish()

    Column {
        id: column

        x: panel.inset
        y: panel.inset
        width: panel.width - 2 * panel.inset
        spacing: 18

        LogoTile {
            size: 52
        }

        Heading {
            id: title

            width: parent.width
            text: qsTr("Find out why your Mac is slow")
            font: Theme.greeting
            color: Theme.text
            wrapMode: Text.Wrap
        }

        Column {
            width: parent.width
            spacing: 12

            Point {
                symbol: "text.magnifyingglass"
                text: qsTr("See the cause in plain English.")
            }

            Point {
                symbol: "lock.shield"
                text: qsTr("Everything stays on your Mac. Nothing is uploaded.")
            }
        }

        Column {
            width: parent.width
            spacing: 8

            CheckBox {
                objectName: "start at login"
                text: qsTr("Start Pacelet at login")
                checked: panel.model.startAtLogin
                onToggled: panel.model.startAtLogin = checked
            }

            Label {
                width: parent.width
                text: qsTr("This lets Pacelet learn how your Mac is used, for upgrade advice. macOS will show a \"Background Items Added\" notice.")
                font: Theme.note
                color: Theme.text3
                wrapMode: Text.Wrap
            }
        }

        PrimaryButton {
            objectName: "get started"
            text: qsTr("Get started")
            focus: true
            onClicked: panel.finish()
        }
    }
}
