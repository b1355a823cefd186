import QtQuick
import Quillon.Views

// A symbol on a ground of its own.
Rectangle {
    id: tile

    property string symbol
    property real symbolSize: Math.round(width * 0.55)
    property color ink: Theme.text

    height: width
    radius: width / 4
    color: Theme.tinted(Theme.card, Theme.accent, 0.18)
    antialiasing: true

    Symbol {
        anchors.centerIn: parent
        width: tile.symbolSize
        height: tile.symbolSize
        name: tile.symbol
        color: tile.ink
    }
}
