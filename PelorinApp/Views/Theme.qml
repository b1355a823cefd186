pragma Singleton

import QtQuick

// The colours, fonts and measures that all screens share. They follow the desktop's palette.
QtObject {
    id: theme

    readonly property SystemPalette palette: SystemPalette { colorGroup: SystemPalette.Active }
    readonly property bool dark: palette.window.hslLightness < 0.5

    readonly property color surface: dark ? palette.window : tinted(palette.window, "#ffffff", 0.72)
    readonly property color text: palette.windowText
    readonly property color secondaryText: highContrast ? text : tinted(surface, text, 0.66)
    readonly property color separator: highContrast ? text : tinted(surface, text, dark ? 0.10 : 0.08)
    readonly property color border: highContrast ? text
                                                 : tinted(surface, dark ? "#ffffff" : "#000000", 0.22)
    readonly property color accent: palette.highlight
    readonly property color textOnAccent:
        0.3 * accent.r + 0.59 * accent.g + 0.11 * accent.b < 0.6 ? "white" : "black"
    readonly property color warning: dark ? "#ffb340" : "#b25000"
    readonly property color danger: dark ? "#b3261e" : "#c4231a" // of what destroys, below white text

    // What lies on the surface: cards, and on those what can be pressed.
    readonly property color card: dark ? tinted(surface, "#ffffff", 0.06) : "#ffffff"
    readonly property color control: tinted(card, text, dark ? 0.12 : 0.07)
    readonly property color groove: tinted(card, text, highContrast ? 0.6 : dark ? 0.24 : 0.18)
    readonly property color knobBorder: highContrast ? text
        : dark ? "transparent" : tinted(groove, text, 0.2)
    readonly property color accentInk: tinted(text, accent, 0.5) // of symbols, readable on a card

    readonly property real cornerRadius: 12
    readonly property real cardRadius: 10
    readonly property real controlRadius: 6
    readonly property real margin: 16
    readonly property real spacing: 8

    readonly property FontLoader titleLoader: FontLoader {
        source: "qrc:/qt/qml/Quillon/Views/fonts/Koulen-Regular.woff"
    }
    readonly property string titleFamily: titleLoader.name
    readonly property int bodySize: 13 // in points of the screen, which Qt calls pixels
    readonly property int smallSize: 12

    property bool highContrast: false // for people who see little of what is but tinted

    // Milliseconds that a change of the screen takes.
    property bool movesLess: false // for people who do not bear things that move
    readonly property int slideTime: movesLess ? 0 : 200
    readonly property int fadeTime: movesLess ? 0 : 120

    // The colour with so much (0…1) of another over it.
    function tinted(base, over, amount) {
        const colour = Qt.color(over)
        return Qt.tint(base, Qt.rgba(colour.r, colour.g, colour.b, amount))
    }
}
