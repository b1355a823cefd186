import QtQuick

// The settings of the desktop switcher.
ToolScreen {
    id: screen

    permissionExplanation: qsTr("Needed to notice scrolling at the screen edges.")

    ActiveEdgesCard { manager: screen.manager }

    ToolSettingsSectionCard {
        EdgeSensitivityRow { manager: screen.manager }
    }

    ToolSettingsSectionCard {
        StepsRow {
            title: qsTr("Scroll sensitivity")
            unit: qsTr("%1 steps")
            help: qsTr("Higher values require more scroll before switching desktops.")
            value: screen.manager.scrollSensitivity
            onMoved: value => screen.manager.scrollSensitivity = value
        }
    }

    ToolSettingsSectionCard {
        HubSymbolRow {
            symbols: ["arrow.up.circle.fill"]
            text: qsTr("Previous desktop")
            meaning: qsTr("Scroll up")
        }
        HubSymbolRow {
            symbols: ["arrow.down.circle.fill"]
            text: qsTr("Next desktop")
            meaning: qsTr("Scroll down")
        }
    }
}
