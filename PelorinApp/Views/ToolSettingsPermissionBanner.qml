import QtQuick
import Quillon.Views

// Over a tool's settings as long as they have no effect.
PermissionBanner {
    required property HubModel hub

    title: qsTr("Permission required")
    onSettingsAsked: hub.openPermissionSettings()
}
