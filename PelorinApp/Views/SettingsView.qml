import QtQuick
import Quillon.Views

// The list of the tools: what is installed, and what can be.
ScrollArea {
    id: view

    padding: 12

    required property HubModel hub
    property bool installedExpanded: true
    property bool marketplaceExpanded: true
    signal removalAsked(string toolId, string name)

    PermissionBanner {
        visible: view.hub.isPermissionMissing
        message: view.hub.permissionMessage
        onSettingsAsked: view.hub.openPermissionSettings()
    }

    HubSection {
        width: parent.width
        title: qsTr("Installed")
        tools: view.hub.installed
        emptyText: qsTr("No tool is installed.")
        expanded: view.installedExpanded
        onToggled: view.installedExpanded = !view.installedExpanded
        card: InstalledToolCard {
            hub: view.hub
            onRemovalAsked: view.removalAsked(toolId, name)
        }
    }

    HubSection {
        width: parent.width
        title: qsTr("Marketplace")
        tools: view.hub.marketplace
        emptyText: qsTr("Every tool is installed.")
        expanded: view.marketplaceExpanded
        onToggled: view.marketplaceExpanded = !view.marketplaceExpanded
        card: MarketplaceToolCard { hub: view.hub }
    }
}
