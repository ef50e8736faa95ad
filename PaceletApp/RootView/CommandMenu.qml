pragma ComponentBehavior: Bound
import QtQml.Models
import Pacelet

/// The menu of everything that the window can do.
Menu {
    id: menu

    /// Roles title, keys, startsGroup and available.
    required property var commands

    signal chosen(int index)

    title: qsTr("Menu")

    Instantiator {
        model: menu.commands
        onObjectAdded: (index, object) => menu.insertItem(index, object as MenuItem)
        onObjectRemoved: (index, object) => menu.removeItem(object as MenuItem)

        MenuItem {
            required property int index
            required property string title
            required property string keys
            required property bool available
            required startsGroup

            text: title
            shortcutText: keys
            enabled: available
            onTriggered: menu.chosen(index)
        }
    }
}
