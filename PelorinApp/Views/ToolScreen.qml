import QtQuick
import Quillon.Views

// What the screens of all tools share; each puts its sections beneath.
FocusScope {
    id: screen

    required property HubModel hub
    required property QtObject manager
    required property string permissionExplanation
    default property alias sections: area.content

    focus: true
    Keys.forwardTo: area // also when no control has the keys

    Accessible.role: Accessible.Pane
    Accessible.name: hub.selected.name

    ToolScreenBackTitleRow {
        id: back
        anchors {
            left: parent.left; right: parent.right; top: parent.top
            leftMargin: Theme.margin; rightMargin: Theme.margin; topMargin: 6
        }
        title: screen.hub.selected.name
        onBackAsked: screen.hub.showTools()
    }

    ScrollArea {
        id: area
        anchors { left: parent.left; right: parent.right; top: back.bottom; bottom: parent.bottom; topMargin: 6 }
        padding: 12
        spacing: 10

        ToolSettingsSheetHeader {
            name: screen.hub.selected.name
            subtitle: screen.hub.selected.subtitle
            icon: screen.hub.selected.icon
        }

        ToolSettingsPermissionBanner {
            visible: !screen.manager.hasAccessibilityPermission
            hub: screen.hub
            message: screen.permissionExplanation
        }
    }

    Rectangle { // what is scrolled goes beneath
        anchors { left: parent.left; right: parent.right; top: area.top }
        height: 1
        visible: area.contentY > 0
        color: Theme.separator
    }
}
