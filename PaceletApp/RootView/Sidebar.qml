pragma ComponentBehavior: Bound
import QtQuick

/// The program's name, the way to each screen, and what happens to the data.
Rectangle {
    id: sidebar

    /// One row a screen, with the roles title, symbol and count (a text, empty for none).
    required property var screens
    /// Row of the screen on show.
    required property int current

    /// One sentence on why the figures are old; empty while they are fresh.
    property string problem

    /// See `CommandMenu`; null for no menu.
    property var commands: null

    signal chosen(int screen)
    signal commandChosen(int command)

    implicitWidth: 212
    color: Theme.sidebar

    Row {
        id: brand

        x: 16
        y: 22
        spacing: 11

        LogoTile {
            size: 34
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: "Pacelet"
            font: Theme.sectionTitle
            color: Theme.text
        }
    }

    Column {
        anchors.top: brand.bottom
        anchors.topMargin: 24
        x: 12
        width: parent.width - 24
        spacing: 3
        Accessible.role: Accessible.PageTabList
        Accessible.name: qsTr("Screens")

        Repeater {
            model: sidebar.screens

            SidebarRow {
                required property int index
                required property string title
                required symbol
                required count

                width: parent?.width ?? implicitWidth
                text: title
                selected: index === sidebar.current
                onClicked: sidebar.chosen(index)
            }
        }
    }

    StyledButton {
        id: menuButton

        /// Made when it is first opened.
        property CommandMenu menu: null
        readonly property bool menuShown: menu?.visible ?? false

        objectName: "menu button"
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: brand.verticalCenter
        width: 30
        height: 30
        padding: 0
        visible: sidebar.commands !== null
        symbol: "ellipsis"
        symbolSize: 16
        labelColor: hovered || menuShown ? Theme.text : Theme.text2
        fill: menuShown ? Theme.controlPressed : "transparent"
        outline: "transparent"
        focusPolicy: Qt.TabFocus
        Accessible.role: Accessible.ButtonMenu
        Accessible.name: qsTr("Menu")
        onClicked: {
            if (menuShown) {
                menu.close();
                return;
            }
            if (!menu) {
                menu = menuMaker.createObject(menuButton) as CommandMenu;
            }
            menu.currentIndex = visualFocus ? 0 : -1;
            menu.open();
        }

        Component {
            id: menuMaker

            CommandMenu {
                y: menuButton.height + 6
                commands: sidebar.commands
                onChosen: index => sidebar.commandChosen(index)
            }
        }
    }

    Row {
        x: 16
        width: parent.width - 32
        anchors.bottom: privacy.top
        anchors.bottomMargin: 14
        spacing: 8
        visible: sidebar.problem !== ""

        Symbol {
            id: warning

            y: 1
            name: "exclamationmark.triangle"
            color: Theme.amber
            size: 14
        }

        Label {
            width: parent.width - warning.width - parent.spacing
            text: sidebar.problem
            font: Theme.note
            color: Theme.amber
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
        }
    }

    Row {
        id: privacy

        x: 16
        width: parent.width - 32
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 18
        spacing: 8

        Symbol {
            id: lock

            y: 1
            name: "lock.shield"
            color: Theme.text3
            size: 14
        }

        Label {
            width: parent.width - lock.width - parent.spacing
            text: qsTr("Works locally. Nothing is uploaded.")
            font: Theme.note
            color: Theme.text3
            wrapMode: Text.Wrap
        }
    }
}
