import QtQuick
import Quillon.Views

// In the place of a tool's settings, where there are none to show.
FocusScope {
    id: placeholder

    required property HubModel hub
    readonly property bool isInstalled: hub.selected.isInstalled

    Accessible.role: Accessible.Pane
    Accessible.name: hub.selected.name

    ToolScreenBackTitleRow {
        id: back
        anchors {
            left: parent.left; right: parent.right; top: parent.top
            leftMargin: Theme.margin; rightMargin: Theme.margin; topMargin: 6 // as of a tool's screen
        }
        title: placeholder.hub.selected.name
        onBackAsked: placeholder.hub.showTools()
    }

    Column {
        anchors { left: parent.left; right: parent.right; margins: Theme.margin * 2; verticalCenter: parent.verticalCenter }
        spacing: Theme.spacing

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 40
            height: 40
            name: placeholder.isInstalled ? "externaldrive.fill" : "arrow.down.circle"
            color: Theme.secondaryText
        }

        HubText {
            width: parent.width
            text: placeholder.isInstalled ? qsTr("%1 is installed").arg(placeholder.hub.selected.name)
                                          : qsTr("Install required")
            maximumLineCount: 3
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignHCenter
            font.weight: Font.DemiBold
        }

        HelpText {
            width: parent.width
            visible: placeholder.isInstalled
            text: qsTr("Restart the app to load this tool.")
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
