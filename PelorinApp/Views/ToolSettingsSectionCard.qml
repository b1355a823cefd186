import QtQuick

// The controls of one section.
Rectangle {
    id: card

    property string title
    default property alias content: column.data

    width: parent ? parent.width : 0
    height: column.height + 24
    radius: Theme.cardRadius
    color: Theme.card
    border { width: 1; color: Theme.separator }
    antialiasing: true

    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.ignored: title === "" // a group of no name is none

    Column {
        id: column
        x: 12
        y: 12
        width: card.width - 24
        spacing: 10

        HubText {
            width: parent.width
            visible: text !== ""
            text: card.title
            font.weight: Font.DemiBold
        }
    }
}
