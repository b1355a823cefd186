import QtQuick

// The settings of the volume control.
ToolScreen {
    id: screen

    permissionExplanation: qsTr("Needed to notice scrolling at the screen edges.")

    ActiveEdgesCard { manager: screen.manager }

    ToolSettingsSectionCard {
        EdgeSensitivityRow { manager: screen.manager }
    }

    ToolSettingsSectionCard {
        HubSymbolRow {
            symbols: ["arrow.up.circle.fill"]
            text: qsTr("Volume up")
            meaning: qsTr("Scroll up")
        }
        HubSymbolRow {
            symbols: ["arrow.down.circle.fill"]
            text: qsTr("Volume down")
            meaning: qsTr("Scroll down")
        }
    }

    ToolSettingsSectionCard {
        StepsRow {
            title: qsTr("Step size")
            unit: qsTr("%1 per scroll")
            help: qsTr("Scales each edge-scroll adjustment: 1 is smallest, 10 is strongest. Uses system volume when possible; otherwise volume keys.")
            value: screen.manager.volumeSteps
            onMoved: value => screen.manager.volumeSteps = value
        }
    }
}
