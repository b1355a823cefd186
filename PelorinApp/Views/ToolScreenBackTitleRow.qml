import QtQuick

// The first row of a tool's screen: the way back, and which tool it is.
Item {
    id: row

    property alias title: title.text
    signal backAsked()

    implicitHeight: 28

    HubButton {
        id: back
        anchors { left: parent.left; leftMargin: -6; verticalCenter: parent.verticalCenter } // its symbol lines up
        width: 28
        height: 28
        plain: true
        symbol: "chevron.left"
        symbolMirrored: true
        accessibleName: qsTr("Back")
        accessibleDescription: qsTr("Return to hub")
        onClicked: row.backAsked()
    }

    HubText {
        id: title
        anchors {
            left: back.right; leftMargin: 4; right: parent.right; verticalCenter: parent.verticalCenter
        }
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        font { family: Theme.titleFamily; pixelSize: 13 }
    }
}
