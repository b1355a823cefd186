import QtQuick
import Quillon.Views

// Says what cannot work as long as a permission is missing, and leads to where it is granted.
Rectangle {
    id: banner

    required property string message
    property string title: ""
    signal settingsAsked()

    width: parent ? parent.width : 0
    height: open.y + open.height + 10
    radius: Theme.cardRadius
    color: Theme.tinted(Theme.card, Theme.warning, 0.14)
    border {
        width: 1
        color: Theme.highContrast ? Theme.text : Theme.tinted(Theme.card, Theme.warning, 0.45)
    }
    antialiasing: true
    enabled: visible // what is not seen has no keys

    Accessible.role: Accessible.Grouping
    Accessible.name: title !== "" ? title : message

    Symbol {
        id: symbol
        anchors { left: parent.left; top: parent.top; margins: 10 }
        width: 18
        height: 18
        name: "exclamationmark.triangle.fill"
        color: Theme.warning
    }

    Column {
        id: texts
        anchors {
            left: symbol.right; leftMargin: 8; right: parent.right; rightMargin: 10; top: parent.top
            topMargin: 10
        }
        spacing: 2

        HubText {
            width: parent.width
            visible: text !== ""
            text: banner.title
            font.weight: Font.DemiBold
        }

        HubText {
            width: parent.width
            text: banner.message
            font.pixelSize: Theme.smallSize
        }
    }

    HubButton {
        id: open
        anchors { left: texts.left }
        y: texts.y + texts.height + 8
        text: qsTr("Open System Settings")
        fill: Theme.highContrast ? Theme.card : Theme.tinted(Theme.card, Theme.warning, 0.28)
        onClicked: banner.settingsAsked()
    }
}
