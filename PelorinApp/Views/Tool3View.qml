import QtQuick
import Quillon.Views

// Of the trackpad middle click there is nothing to set: what becomes what.
ToolScreen {
    id: screen

    permissionExplanation: qsTr("Needed to turn a three-finger press into a click.")

    ToolSettingsSectionCard {
        Item {
            width: parent.width
            height: Math.max(press.height, click.height)

            SymbolTile {
                id: press
                anchors { left: parent.left; right: arrow.left }
                symbol: "hand.raised.fill"
                text: qsTr("Three-finger press")
            }

            Symbol {
                id: arrow
                anchors { horizontalCenter: parent.horizontalCenter }
                y: 18
                width: 20
                height: 20
                name: LayoutMirroring.enabled ? "arrow.left" : "arrow.right"
                color: Theme.secondaryText
            }

            SymbolTile {
                id: click
                anchors { left: arrow.right; right: parent.right }
                symbol: "computermouse.fill"
                text: qsTr("Middle click")
            }
        }

        HelpText {
            width: parent.width
            text: qsTr("Works globally once accessibility is granted. No extra toggles—enable the tool from the hub to turn it on.")
        }
    }
}
