import QtQuick

/// Words over what follows them.
Label {
    Accessible.role: Accessible.Heading
}
