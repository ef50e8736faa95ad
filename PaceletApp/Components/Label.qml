import QtQuick

/// Words of the interface, which a screen reader says, too. A text whose words belong to the name
/// of what it stands in is a plain Text instead, with `Accessible.ignored`.
Text {
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
