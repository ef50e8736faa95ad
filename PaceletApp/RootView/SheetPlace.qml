import QtQuick
import Pacelet

/// The sheet over the window.
Sheet {
    id: sheet

    required property SheetModel model

    function load() {
        if (model.file === "") {
            content.source = "";
        } else {
            content.setSource(model.file, {
                model: model.content
            });
        }
    }

    // The content brings its margins.
    padding: 0
    visible: model.open
    dismissable: model.dismissable
    onDismissed: model.close()
    onClosed: model.closed()
    Component.onCompleted: load()

    // One that is higher than the window scrolls.
    Flickable {
        implicitWidth: content.width
        width: content.width
        height: Math.min(content.height, (sheet.parent?.height ?? content.height) - 2 * sheet.margins)
        contentHeight: content.height
        interactive: contentHeight > height
        clip: interactive
        boundsBehavior: Flickable.StopAtBounds

        Loader {
            id: content

            focus: true
        }
    }

    Connections {
        target: sheet.model

        function onContentChanged() {
            sheet.load();
        }
    }

    Connections {
        target: content.item
        ignoreUnknownSignals: true

        function onDone() {
            sheet.model.close();
        }

        function onClosed() {
            sheet.model.close();
        }
    }
}
