import QtQuick

// The settings of the reversal of scrolling.
ToolScreen {
    id: screen

    permissionExplanation: qsTr("Needed to turn scrolling round.")

    ToolSettingsSectionCard {
        title: qsTr("Scroll direction")

        HubToggle {
            text: qsTr("Reverse trackpad")
            help: qsTr("Inverts natural scrolling for trackpad gestures only.")
            checked: screen.manager.reverseTrackpad
            onToggled: checked => screen.manager.reverseTrackpad = checked
        }
        HubToggle {
            text: qsTr("Reverse mouse wheel")
            help: qsTr("Inverts scroll direction for external mice.")
            checked: screen.manager.reverseMouse
            onToggled: checked => screen.manager.reverseMouse = checked
        }
    }
}
