import QtQuick

// At which edges of the screen a tool is at work.
ToolSettingsSectionCard {
    id: card

    required property QtObject manager

    title: qsTr("Active edges")

    EdgeSelectorView { manager: card.manager }
}
