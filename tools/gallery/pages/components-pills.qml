import QtQuick
import Pacelet

Rectangle {
    width: 640
    height: 260
    color: Theme.window

    Column {
        x: 34
        y: 28
        spacing: 18

        SectionLabel {
            text: "Verdicts"
        }

        Row {
            spacing: 12

            VerdictPill {
                verdict: "safe"
            }

            VerdictPill {
                verdict: "review"
            }

            VerdictPill {
                verdict: "leave"
            }
        }

        SectionLabel {
            text: "Status"
        }

        Row {
            spacing: 12

            StatusPill {
                status: "quiet"
            }

            StatusPill {
                status: "busy"
            }

            StatusPill {
                status: "struggling"
            }
        }

        Row {
            spacing: 12

            Pill {
                text: "Active"
                fg: Theme.accentLight
                bg: Theme.accentBG
            }

            Pill {
                width: 120
                symbol: "leaf"
                text: "Ends when the backup is done"
            }

            LeaveNote {
                anchors.verticalCenter: parent.verticalCenter
                text: "Calms when memory frees up"
            }
        }
    }
}
