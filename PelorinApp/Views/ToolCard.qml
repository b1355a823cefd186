import QtQuick
import Quillon.Views

// What the cards of all tools share: icon, name and subtitle, and room for what can be done.
Rectangle {
    id: card

    required property string name
    required property string subtitle
    required property string icon
    property bool dimmed: false
    default property alias content: actions.data
    property alias corner: cornerSlot.data

    width: parent ? parent.width : 0
    height: actions.y + actions.height + 10
    radius: Theme.cardRadius
    color: Theme.card
    border { width: 1; color: Theme.separator }
    antialiasing: true

    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Accessible.description: subtitle

    IconTile {
        id: tile
        anchors { left: parent.left; top: parent.top; margins: 10 }
        width: 36
        symbol: card.icon
        color: card.dimmed ? Theme.control : Theme.tinted(Theme.card, Theme.accent, 0.18)
        ink: card.dimmed ? Theme.secondaryText : Theme.text
    }

    HubText {
        id: title
        anchors {
            left: tile.right; leftMargin: 10; right: cornerSlot.left; rightMargin: 8; top: parent.top
            topMargin: 9
        }
        text: card.name
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        font.weight: Font.DemiBold
        Accessible.ignored: true // the card's own
    }

    HelpText {
        id: line
        anchors { left: title.left; right: title.right; top: title.bottom; topMargin: 1 }
        text: card.subtitle
        maximumLineCount: 3
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    Item {
        id: cornerSlot
        anchors { right: parent.right; top: parent.top; margins: 10 }
        width: childrenRect.width
        height: childrenRect.height
    }

    Flow {
        id: actions
        anchors { left: title.left; right: parent.right; rightMargin: 10 }
        y: Math.max(line.y + line.height + 8, tile.y + tile.height + 4)
        spacing: 6
    }
}
