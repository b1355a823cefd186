import QtQuick
import Quillon.Views

// A part of the list of tools that can be folded up.
Column {
    id: section

    required property string title
    required property ToolListModel tools
    required property Component card
    required property string emptyText
    property bool expanded: true
    signal toggled()

    spacing: Theme.spacing

    onExpandedChanged: {
        if (!expanded && fold.activeFocus) // what is not seen has no keys
            header.forceActiveFocus()
    }

    Pressable {
        id: header
        width: section.width
        height: 24
        onClicked: section.toggled()

        Accessible.name: section.title
        Accessible.description: section.tools.total
        Accessible.checkable: true
        Accessible.checked: section.expanded
        Accessible.onToggleAction: press()

        Symbol {
            id: chevron
            anchors { left: parent.left; verticalCenter: parent.verticalCenter }
            width: 14
            height: 14
            name: "chevron.down"
            color: Theme.secondaryText
            rotation: section.expanded ? 0 : header.LayoutMirroring.enabled ? 90 : -90
            Behavior on rotation { NumberAnimation { duration: Theme.slideTime; easing.type: Easing.OutCubic } }
        }

        HubText {
            id: name
            anchors { left: chevron.right; leftMargin: 6; verticalCenter: parent.verticalCenter }
            text: section.title
            wrapMode: Text.NoWrap
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }

        HelpText {
            anchors { left: name.right; leftMargin: 6; baseline: name.baseline }
            text: section.tools.total
            Accessible.ignored: true
        }

        FocusRing {}
    }

    FocusScope {
        id: fold

        // What had the keys has gone, with its card.
        readonly property bool isBereft: Window.activeFocusItem === fold
        onIsBereftChanged: {
            if (isBereft)
                Qt.callLater(() => header.forceActiveFocus())
        }

        width: section.width
        height: section.expanded ? cards.height : 0
        visible: height > 0
        clip: height < cards.height

        Behavior on height { NumberAnimation { duration: Theme.slideTime; easing.type: Easing.OutCubic } }

        Column {
            id: cards
            width: parent.width
            spacing: Theme.spacing

            Repeater {
                model: section.tools
                delegate: section.card
            }

            HelpText {
                width: parent.width
                visible: section.tools.total === 0
                text: section.emptyText
                leftPadding: 20
                rightPadding: 20
            }

            Item {
                width: parent.width
                height: more.height
                visible: section.tools.total > section.tools.count
                enabled: visible

                HubButton {
                    id: more
                    anchors.left: parent.left
                    text: qsTr("Show more")
                    onClicked: section.tools.showMore()
                }
            }
        }
    }
}
