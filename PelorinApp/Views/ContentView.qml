import QtQuick
import Quillon.Views

// What the popover shows: the list of the tools, or one tool's settings in its place.
FocusScope {
    id: root

    required property HubModel hub

    implicitWidth: 360
    implicitHeight: 520

    property bool composited: true
    readonly property real cornerRadius: Theme.cornerRadius

    // The question whether a tool is to be removed, and which one.
    property bool showRemoveConfirm: false
    property string toolToRemove
    readonly property bool sheetAttached: showRemoveConfirm

    ThemeOptions { hub: root.hub }

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    // True when there was something to leave.
    function goBack(): bool {
        if (showRemoveConfirm) {
            closeSheet()
            return true
        }
        if (hub.selected.toolId !== "") {
            hub.showTools()
            return true
        }
        return false
    }

    function closeSheet() {
        showRemoveConfirm = false
        stage.forceActiveFocus()
    }

    Accessible.role: Accessible.Pane
    Accessible.name: title.text

    // Where nothing is blended the corners are cut along pixels: what the rounded edge blends
    // with is its own colour.
    Rectangle {
        anchors.fill: parent
        visible: !root.composited
        color: Theme.border
    }

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: Theme.surface
        border { width: 1; color: Theme.border }
        antialiasing: true
    }

    Item {
        id: titleRow
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 1 }
        height: 52
        enabled: !root.showRemoveConfirm

        HubText {
            id: title
            anchors { left: parent.left; leftMargin: Theme.margin; verticalCenter: parent.verticalCenter }
            text: qsTr("Quillon")
            wrapMode: Text.NoWrap
            font { family: Theme.titleFamily; pixelSize: 26 }
        }

        CoffeeButton {
            anchors { right: parent.right; rightMargin: Theme.margin; verticalCenter: parent.verticalCenter }
            hub: root.hub
        }

        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: 1
            color: Theme.separator
        }
    }

    HubStage {
        id: stage
        focus: true
        anchors { left: parent.left; right: parent.right; top: titleRow.bottom; bottom: parent.bottom; margins: 1 }
        enabled: !root.showRemoveConfirm
        hub: root.hub
        onRemovalAsked: (toolId, name) => {
            root.toolToRemove = toolId
            sheet.toolName = name
            root.showRemoveConfirm = true
        }
    }

    Connections {
        target: root.hub.installed

        function onTotalChanged() { // somebody else may have answered the question
            if (root.showRemoveConfirm && !root.hub.isInstalled(root.toolToRemove))
                root.closeSheet()
        }
    }

    RemovalSheet {
        id: sheet
        anchors.fill: parent
        isOpen: root.showRemoveConfirm
        onCancelled: root.closeSheet()
        onConfirmed: {
            root.closeSheet()
            root.hub.uninstall(root.toolToRemove)
        }
    }
}
