import QtQuick
import Quillon.Views

// A tool that can be installed.
ToolCard {
    id: card

    required property HubModel hub
    required property string toolId
    required property bool isInstalling

    dimmed: true

    HubButton {
        visible: !card.isInstalling
        enabled: visible // what is not seen has no keys
        text: qsTr("Install")
        accessibleDescription: card.name
        onClicked: card.hub.install(card.toolId)
    }

    Row {
        visible: card.isInstalling
        height: 26
        spacing: 8

        Spinner { anchors.verticalCenter: parent.verticalCenter }

        HelpText {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Installing…")
            wrapMode: Text.NoWrap
        }
    }
}
