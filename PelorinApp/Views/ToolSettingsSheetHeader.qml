import QtQuick

// Which tool the settings are of.
Item {
    id: header

    property string name
    property string subtitle
    property string icon

    width: parent ? parent.width : 0
    height: Math.max(tile.height, texts.height)

    IconTile {
        id: tile
        anchors { left: parent.left; verticalCenter: parent.verticalCenter }
        width: 44
        symbol: header.icon
    }

    Column {
        id: texts
        anchors {
            left: tile.right; leftMargin: 12; right: parent.right; verticalCenter: parent.verticalCenter
        }
        spacing: 1

        HubText {
            width: parent.width
            text: header.name
            font { pixelSize: Theme.bodySize + 2; weight: Font.DemiBold }
        }

        HubText {
            width: parent.width
            text: header.subtitle
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
        }
    }
}
