import QtQuick

// The question whether a tool is to go, over everything else.
FocusScope {
    id: sheet

    property string toolName
    property bool isOpen: false
    signal cancelled()
    signal confirmed()

    visible: isOpen || opacity > 0
    opacity: isOpen ? 1 : 0
    enabled: isOpen
    Behavior on opacity { NumberAnimation { duration: Theme.fadeTime } }

    onIsOpenChanged: {
        if (isOpen)
            Qt.callLater(() => cancel.forceActiveFocus()) // once it can have the keys
    }

    Accessible.role: Accessible.Dialog
    Accessible.name: title.text
    Accessible.description: line.text

    Rectangle {
        anchors { fill: parent; margins: 1 }
        radius: Theme.cornerRadius - 1
        color: Qt.rgba(0, 0, 0, Theme.dark ? 0.5 : 0.28)

        MouseArea { // nothing below is to be had
            anchors.fill: parent
            hoverEnabled: true
            onWheel: wheel => wheel.accepted = true
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(parent.width - 48, 290)
        height: content.height + 36
        radius: Theme.cornerRadius
        color: Theme.card
        border { width: 1; color: Theme.border }
        antialiasing: true

        Column {
            id: content
            x: 18
            y: 18
            width: parent.width - 36
            spacing: 6

            HubText {
                id: title
                width: parent.width
                text: qsTr("Remove %1?").arg(sheet.toolName)
                maximumLineCount: 3
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignHCenter
                Accessible.ignored: true // the sheet's own
                font { pixelSize: Theme.bodySize + 1; weight: Font.DemiBold }
            }

            HelpText {
                id: line
                width: parent.width
                text: qsTr("This will uninstall the tool.")
                horizontalAlignment: Text.AlignHCenter
                Accessible.ignored: true
            }

            Item {
                width: 1
                height: 6
            }

            Row {
                id: buttons
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: Theme.spacing

                HubButton {
                    id: cancel
                    text: qsTr("Cancel")
                    implicitHeight: 28
                    width: Math.max(90, implicitWidth)
                    KeyNavigation.tab: remove
                    KeyNavigation.backtab: remove
                    KeyNavigation.left: remove
                    KeyNavigation.right: remove
                    onClicked: sheet.cancelled()
                }

                HubButton {
                    id: remove
                    text: qsTr("Remove")
                    implicitHeight: 28
                    width: Math.max(90, implicitWidth)
                    color: "white"
                    fill: Theme.danger
                    KeyNavigation.tab: cancel
                    KeyNavigation.backtab: cancel
                    KeyNavigation.left: cancel
                    KeyNavigation.right: cancel
                    onClicked: sheet.confirmed()
                }
            }
        }
    }
}
