import QtQuick

// A large symbol over what it stands for.
Item {
    id: tile

    property string symbol
    property string text

    height: label.y + label.height

    IconTile {
        id: ground
        anchors.horizontalCenter: parent.horizontalCenter
        width: 56
        symbol: tile.symbol
        symbolSize: 30
        color: Theme.control
        ink: Theme.accentInk
    }

    HubText {
        id: label
        y: ground.height + 8
        width: parent.width
        text: tile.text
        horizontalAlignment: Text.AlignHCenter
    }
}
