import QtQuick

// The settings of the window switcher.
ToolScreen {
    id: screen

    property alias newExcludedAppName: exclusions.newExcludedAppName
    readonly property var detectedApps: manager.detectedApps

    permissionExplanation: qsTr("Needed to notice scrolling at the screen edges.")

    ActiveEdgesCard { manager: screen.manager }

    ToolSettingsSectionCard {
        EdgeSensitivityRow { manager: screen.manager }
    }

    ToolSettingsSectionCard {
        StepsRow {
            title: qsTr("Scroll sensitivity")
            unit: qsTr("%1 steps")
            help: qsTr("Higher values require more scroll before switching windows.")
            value: screen.manager.edgeScrollSteps
            onMoved: value => screen.manager.edgeScrollSteps = value
        }
    }

    ToolSettingsSectionCard {
        HubSymbolRow {
            symbols: ["arrow.up", "arrow.right"]
            text: qsTr("Next")
            meaning: qsTr("Scroll up or right")
        }
        HubSymbolRow {
            symbols: ["arrow.down", "arrow.left"]
            text: qsTr("Previous")
            meaning: qsTr("Scroll down or left")
        }
    }

    ToolSettingsSectionCard {
        title: qsTr("App exclusions")

        HelpText {
            width: parent.width
            text: qsTr("Edge switching is ignored in these apps.")
        }
        ExcludedAppsEditor {
            id: exclusions
            manager: screen.manager
            detectedApps: screen.detectedApps
        }
    }
}
