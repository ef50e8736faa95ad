pragma Singleton
import QtQuick
import Pacelet

/// Every colour, font and duration of the interface.
QtObject {
    // Surfaces
    readonly property color window: "#111116"
    readonly property color sidebar: "#14141A"
    readonly property color card: "#191921"
    readonly property color raised: "#1F1F28"
    readonly property color line: "#26262F"

    // Text
    readonly property color text: "#F2F2F5"
    readonly property color text2: "#A1A1AA"
    readonly property color text3: "#71717A"

    // Accent and states
    readonly property color accent: "#8B5CF6"
    readonly property color accentLight: "#A78BFA"
    readonly property color button: "#7C4DFF"
    readonly property color accentBG: "#2A2144"
    readonly property color amber: "#F5B841"
    readonly property color amberBG: "#3A2E14"
    readonly property color green: "#6EE7B7"
    readonly property color greenBG: "#14332A"
    readonly property color red: "#F87171"
    readonly property color redBG: "#3A1C1F"
    readonly property color neutral: "#C4C4CC"
    readonly property color neutralBG: "#24242C"

    // Pieces
    readonly property color tileBorder: "#2C2C36"
    readonly property color tileSymbol: "#C4B5FD"
    readonly property color controlBorder: "#33333D"
    readonly property color controlFill: "#05FFFFFF"
    readonly property color controlHover: "#0AFFFFFF"
    readonly property color controlPressed: "#0FFFFFFF"
    readonly property color purpleText: "#DDD6FE"
    readonly property color purpleFill: "#1E1830"
    readonly property color purpleBorder: "#4C3D85"
    readonly property color buttonHover: "#8A60FF"
    readonly property color danger: "#DC4C4C"
    readonly property color dangerHover: "#E65F5F"
    readonly property color rowHover: "#06FFFFFF"
    readonly property color scrollHandle: "#3A3A46"
    readonly property color scrollHandleHover: "#50505E"
    readonly property color scrim: "#99000000"
    readonly property color textOnAccent: "white"
    readonly property color memoryCached: "#60A5FA"

    // Fonts
    readonly property font title: Typography.text(30, Font.Bold)
    readonly property font subtitle: Typography.text(14.5)
    readonly property font greeting: Typography.text(24, Font.Bold)
    readonly property font heading: Typography.text(20, Font.Bold)
    readonly property font sheetTitle: Typography.text(22, Font.Bold)
    readonly property font sectionTitle: Typography.text(17, Font.Bold)
    readonly property font lead: Typography.text(15)
    readonly property font body: Typography.text(14.5)
    readonly property font bodyStrong: Typography.text(15, Font.DemiBold)
    readonly property font detail: Typography.text(13)
    readonly property font legend: Typography.figures(11.5)
    readonly property font axis: Typography.figures(10.5)
    readonly property font control: Typography.text(13.5)
    readonly property font controlMedium: Typography.text(13.5, Font.Medium)
    readonly property font controlStrong: Typography.text(13.5, Font.DemiBold)
    readonly property font windowName: Typography.text(13, Font.DemiBold)
    readonly property font windowCount: Typography.text(13)
    readonly property font ownerName: Typography.text(15, Font.DemiBold)
    readonly property font fix: Typography.text(12, Font.DemiBold)
    readonly property font note: Typography.text(12)
    readonly property font rowSubtitle: Typography.text(12.5)
    readonly property font chip: Typography.text(12.5, Font.Medium)
    readonly property font pill: Typography.text(11.5, Font.DemiBold)
    readonly property font figures: Typography.figures(13.5)
    readonly property font smallFigures: Typography.figures(12)
    readonly property font largeFigures: Typography.figures(26, Font.Bold)
    readonly property font mono: Typography.mono(13.5)
    readonly property font monoNote: Typography.mono(12)

    // Motion. The shell sets reducedMotion from the desktop's own setting.
    property bool reducedMotion: false
    readonly property int quick: reducedMotion ? 0 : 120
    readonly property int settle: reducedMotion ? 0 : 220

    /// How long the pointer rests before a tip comes up, in milliseconds.
    readonly property int tipDelay: 500

    /// What stands at both sides of a screen's content. A line that fills a very wide window would
    /// be hard to follow, so the content stays in its middle.
    function sideMargin(width: real): real {
        return Math.max(34, Math.round((width - 1400) / 2));
    }

    /// Of a `Tone`; one that is none is neutral.
    function foreground(tone: int): color {
        switch (tone) {
        case Tone.Green:
            return green;
        case Tone.Amber:
            return amber;
        case Tone.Red:
            return red;
        default:
            return neutral;
        }
    }

    function background(tone: int): color {
        switch (tone) {
        case Tone.Green:
            return greenBG;
        case Tone.Amber:
            return amberBG;
        case Tone.Red:
            return redBG;
        default:
            return neutralBG;
        }
    }
}
