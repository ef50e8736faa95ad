import QtQuick
import Pacelet

Rectangle {
    width: 640
    height: 470
    color: Theme.window

    Column {
        x: 34
        y: 28
        width: parent.width - 68
        spacing: 8

        Repeater {
            model: [
                {
                    words: "Overview, title 30 bold",
                    face: Theme.title
                },
                {
                    words: "Do you need a new Mac? 20 bold",
                    face: Theme.heading
                },
                {
                    words: "What's using your CPU, 17 bold",
                    face: Theme.sectionTitle
                },
                {
                    words: "Understand what's happening on your Mac. 14.5",
                    face: Theme.subtitle
                },
                {
                    words: "Control 13.5 and everything beside it",
                    face: Theme.control
                },
                {
                    words: "Notes at 12, quiet",
                    face: Theme.note
                },
                {
                    words: "com.example.updater.agent",
                    face: Theme.mono
                }
            ]

            Text {
                required property var modelData

                text: modelData.words
                font: modelData.face
                color: Theme.text
            }
        }

        Divider {
            width: parent.width
        }

        Row {
            spacing: 40

            Repeater {
                model: [["111.1%", "1.1 GB"], ["888.8%", "8.8 GB"], ["0.0%", "64 KB"]]

                Column {
                    required property var modelData

                    Text {
                        width: 60
                        text: parent.modelData[0]
                        font: Theme.figures
                        color: Theme.text
                        horizontalAlignment: Text.AlignRight
                    }

                    Text {
                        width: 60
                        text: parent.modelData[1]
                        font: Theme.figures
                        color: Theme.text2
                        horizontalAlignment: Text.AlignRight
                    }
                }
            }

            Text {
                text: "47%"
                font: Theme.largeFigures
                color: Theme.text
            }
        }

        Column {
            Text {
                text: "checked 11s ago · 111.11 MB/s"
                font: Theme.figures
                color: Theme.text
            }

            Text {
                text: "checked 88s ago · 888.88 MB/s"
                font: Theme.figures
                color: Theme.text
            }
        }

        ElidedText {
            width: 260
            text: "A very long name of a process that does not fit here"
            font: Theme.control
            color: Theme.text
        }

        ElidedText {
            width: 260
            text: "/Applications/Some Suite/Some Program.app/Contents/MacOS/Some Program"
            elide: Text.ElideMiddle
            font: Theme.mono
            color: Theme.text2
        }
    }
}
