import QtQuick

/// What stands where there is nothing to show.
Column {
    id: state

    property string symbol
    property string title
    property string description

    spacing: 10

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: state.symbol !== ""
        name: state.symbol
        color: Theme.text3
        size: 36
    }

    Label {
        width: Math.min(Math.ceil(implicitWidth), state.width > 0 ? state.width : 480)
        anchors.horizontalCenter: parent.horizontalCenter
        text: state.title
        font: Theme.sectionTitle
        color: Theme.text
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }

    Label {
        width: Math.min(Math.ceil(implicitWidth), state.width > 0 ? state.width : 480)
        anchors.horizontalCenter: parent.horizontalCenter
        visible: text !== ""
        text: state.description
        font: Theme.subtitle
        color: Theme.text2
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }
}
