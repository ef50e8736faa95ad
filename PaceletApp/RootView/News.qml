import QtQuick

/// Says its words to those who cannot see what changed, and shows nothing. They are heard when it
/// comes to be: a screen reader then finishes its sentence, and says them next.
Item {
    id: news

    property string words

    width: 1
    height: 1
    visible: false
    Accessible.role: Accessible.AlertMessage
    Accessible.name: words
    onWordsChanged: {
        visible = false;
        visible = words !== "";
    }
}
