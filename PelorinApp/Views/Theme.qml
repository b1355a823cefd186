pragma Singleton

import QtQuick

// The colours, fonts and measures that all screens share. They follow the desktop's palette.
QtObject {
    id: theme

    readonly property SystemPalette palette: SystemPalette { colorGroup: SystemPalette.Active }
    readonly property bool dark: palette.window.hslLightness < 0.5

    readonly property color surface: dark ? palette.window : mix(palette.window, "white", 0.72)
    readonly property color text: palette.windowText
    readonly property color secondaryText: mix(surface, text, 0.58)
    readonly property color separator: mix(surface, text, dark ? 0.10 : 0.08)
    readonly property color border: mix(surface, dark ? "white" : "black", dark ? 0.20 : 0.20)
    readonly property color accent: palette.highlight

    readonly property real cornerRadius: 12
    readonly property real margin: 16

    readonly property FontLoader titleLoader: FontLoader {
        source: "qrc:/qt/qml/Quillon/Views/fonts/Koulen-Regular.woff"
    }
    readonly property string titleFamily: titleLoader.name
    readonly property int bodySize: 13 // in points of the screen, which Qt calls pixels
    readonly property int smallSize: 12

    function mix(from: color, to: color, amount: real): color {
        return Qt.rgba(from.r + (to.r - from.r) * amount, from.g + (to.g - from.g) * amount,
                       from.b + (to.b - from.b) * amount, 1)
    }
}
