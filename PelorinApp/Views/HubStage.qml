import QtQuick
import Quillon.Views

// The place where one screen takes another's: what comes slides in and shows itself, what goes is
// gone at once.
FocusScope {
    id: stage

    required property HubModel hub
    signal removalAsked(string toolId, string name)

    readonly property var selected: hub.selected
    readonly property bool showsTools: selected.toolId === ""
    readonly property real leading: LayoutMirroring.enabled ? 1 : -1 // where rows begin

    // What the place of a tool shows; another one is another screen.
    readonly property string shown: showsTools ? ""
        : [selected.toolId, selected.isInstalled, selected.screen].join("\n")
    onShownChanged: takeSelection()
    Component.onCompleted: takeSelection()

    clip: true

    function takeSelection() {
        if (showsTools) {
            if (tool.status !== Loader.Null)
                slide(list, leading)
            tool.setSource("")
            list.forceActiveFocus()
            return
        }
        if (selected.isInstalled && selected.screen.toString() !== "")
            tool.setSource(selected.screen, {hub: hub, manager: selected.manager})
        else
            tool.setSource("ToolPlaceholder.qml", {hub: hub})
        slide(tool, -leading)
        tool.forceActiveFocus()
    }

    function slide(item, from) {
        motion.stop()
        motion.target = item
        motion.from = from * width
        motion.start()
    }

    FocusScope { // remembers which of its items had the keys
        id: list
        width: parent.width
        height: parent.height
        visible: stage.showsTools
        focus: stage.showsTools

        SettingsView {
            anchors.fill: parent
            focus: true
            hub: stage.hub
            onRemovalAsked: (toolId, name) => stage.removalAsked(toolId, name)
        }
    }

    Loader {
        id: tool
        width: parent.width
        height: parent.height
        focus: !stage.showsTools
    }

    ParallelAnimation {
        id: motion
        property Item target
        property real from

        NumberAnimation {
            target: motion.target
            property: "x"
            from: motion.from
            to: 0
            duration: Theme.slideTime
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            target: motion.target
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.slideTime
        }
        onStopped: {
            list.x = 0
            list.opacity = 1
            tool.x = 0
            tool.opacity = 1
        }
    }
}
