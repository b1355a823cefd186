import QtQuick
import Quillon.Views

// A tool that is installed: switched on and off, set up, and removed.
ToolCard {
    id: card

    required property HubModel hub
    required property string toolId
    required property bool isEnabled
    signal removalAsked()

    dimmed: !isEnabled

    corner: HubButton {
        symbol: "power"
        width: 28
        height: 28
        color: card.isEnabled ? Theme.textOnAccent : Theme.secondaryText
        fill: card.isEnabled ? Theme.accent : Theme.control
        accessibleName: qsTr("Power")
        accessibleDescription: card.name
        Accessible.checkable: true
        Accessible.checked: card.isEnabled
        Accessible.onToggleAction: press()
        onClicked: card.hub.setEnabled(card.toolId, !card.isEnabled)
    }

    HubButton {
        text: qsTr("Customize")
        accessibleDescription: card.name
        onClicked: card.hub.customize(card.toolId)
    }

    HubButton {
        text: qsTr("Remove")
        accessibleDescription: card.name
        onClicked: card.removalAsked()
    }
}
