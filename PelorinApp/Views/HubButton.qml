import QtQuick
import Quillon.Views

// Something to press: a text, a symbol, or both.
Pressable {
    id: button

    property string text
    property string symbol
    property real symbolSize: 15
    property bool symbolMirrored: false // where what is written runs from right to left
    property color color: Theme.text
    property color fill: Theme.control
    property bool plain: false // without a shape of its own until the pointer is over it
    property string accessibleName: text
    property string accessibleDescription: ""

    implicitWidth: Math.ceil(row.implicitWidth) + (text === "" ? 12 : 20)
    implicitHeight: 26
    opacity: enabled ? 1 : 0.5

    Accessible.name: accessibleName
    Accessible.description: accessibleDescription

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        antialiasing: true
        color: button.isHeld && button.isHovered ? Theme.tinted(button.fill, Theme.text, 0.16)
             : button.isHovered ? Theme.tinted(button.fill, Theme.text, 0.08) : button.fill
        border { width: Theme.highContrast ? 1 : 0; color: Theme.text }
        opacity: button.plain && !button.isHovered ? 0 : 1
    }

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: button.symbol !== ""
            width: button.symbolSize
            height: button.symbolSize
            name: button.symbol
            color: button.color
            transform: Scale {
                origin.x: button.symbolSize / 2
                xScale: button.symbolMirrored && button.LayoutMirroring.enabled ? -1 : 1
            }
        }

        HubText {
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            text: button.text
            wrapMode: Text.NoWrap
            color: button.color
            font.pixelSize: Theme.smallSize
            Accessible.ignored: true
        }
    }

    FocusRing {}
}
