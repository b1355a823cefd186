import QtQuick

// The settings of the media control.
ToolScreen {
    id: screen

    permissionExplanation: qsTr("Needed to notice clicks at the screen edges.")

    ActiveEdgesCard { manager: screen.manager }

    ToolSettingsSectionCard {
        title: qsTr("Sensitivity & triggers")

        EdgeSensitivityRow {
            manager: screen.manager
            isHeading: false
        }

        HubToggle {
            text: qsTr("Middle mouse button")
            checked: screen.manager.middleButtonEnabled
            onToggled: checked => screen.manager.middleButtonEnabled = checked
        }
        HubToggle {
            text: qsTr("Left mouse button")
            checked: screen.manager.leftButtonEnabled
            onToggled: checked => screen.manager.leftButtonEnabled = checked
        }
        HelpText {
            width: parent.width
            text: qsTr("Which buttons count as a middle-click at the edge.")
        }
    }

    ToolSettingsSectionCard {
        HubSymbolRow {
            symbols: ["1.circle.fill"]
            text: qsTr("Play/Pause")
            meaning: qsTr("One click")
        }
        HubSymbolRow {
            symbols: ["2.circle.fill"]
            text: qsTr("Next")
            meaning: qsTr("Two clicks")
        }
        HubSymbolRow {
            symbols: ["3.circle.fill"]
            text: qsTr("Previous")
            meaning: qsTr("Three clicks")
        }
    }
}
