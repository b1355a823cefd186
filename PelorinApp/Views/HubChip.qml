import QtQuick

// A name with something that can be done with it.
Rectangle {
    id: chip

    property string name
    property string symbol
    property string actionName
    property bool isPressable: true
    property real maximumWidth: 300
    readonly property alias button: button
    signal pressed()

    width: Math.min(maximumWidth, Math.ceil(label.implicitWidth) + 36)
    height: 26
    radius: 13
    color: Theme.control
    border { width: Theme.highContrast ? 1 : 0; color: Theme.text }
    antialiasing: true

    HubText {
        id: label
        anchors { left: parent.left; leftMargin: 10; verticalCenter: parent.verticalCenter }
        width: chip.width - 36
        text: chip.name
        elide: Text.ElideMiddle
        wrapMode: Text.NoWrap
        maximumLineCount: 1
        font.pixelSize: Theme.smallSize
    }

    HubButton {
        id: button
        anchors { right: parent.right; rightMargin: 2; verticalCenter: parent.verticalCenter }
        width: 22
        height: 22
        plain: true
        symbol: chip.symbol
        symbolSize: 12
        color: Theme.secondaryText
        enabled: chip.isPressable
        accessibleName: chip.actionName
        onClicked: chip.pressed()
    }
}
