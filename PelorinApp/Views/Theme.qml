pragma Singleton

import QtQuick

// The colours, fonts and measures that all screens share. They follow the desktop's palette.
QtObject {
    id: theme

    readonly property SystemPalette palette: SystemPalette { colorGroup: SystemPalette.Active }
    readonly property bool dark: palette.window.hslLightness < 0.5

    readonly property color surface: dark ? palette.window : tinted(palette.window, "#ffffff", 0.72)
    readonly property color text: palette.windowText
    readonly property color secondaryText: tinted(surface, text, 0.62)
    readonly property color separator: tinted(surface, text, dark ? 0.10 : 0.08)
    readonly property color border: tinted(surface, dark ? "#ffffff" : "#000000", 0.22)
    readonly property color accent: palette.highlight

    readonly property real cornerRadius: 12
    readonly property real margin: 16

    readonly property FontLoader titleLoader: FontLoader {
        source: "qrc:/qt/qml/Quillon/Views/fonts/Koulen-Regular.woff"
    }
    readonly property string titleFamily: titleLoader.name
    readonly property int bodySize: 13 // in points of the screen, which Qt calls pixels
    readonly property int smallSize: 12

    // The colour with so much (0…1) of another over it.
    function tinted(base, over, amount) {
        const colour = Qt.color(over)
        return Qt.tint(base, Qt.rgba(colour.r, colour.g, colour.b, amount))
    }
}
