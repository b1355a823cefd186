import QtQuick

// The names of a manager's excluded applications: to be typed, to be taken from those that were
// seen, and to be removed.
Column {
    id: editor

    required property QtObject manager
    required property var detectedApps
    property alias newExcludedAppName: field.text
    readonly property var excluded: manager.excludedAppNames

    width: parent ? parent.width : 0
    spacing: Theme.spacing

    // As the manager compares names.
    function isExcluded(name: string): bool {
        return excluded.some(each => each.toLowerCase() === name.toLowerCase())
    }

    // True when it is in the list only now.
    function exclude(name: string): bool {
        const trimmed = name.replace(/^[\s\u0085]+|[\s\u0085]+$/g, "")
        if (trimmed === "" || isExcluded(trimmed))
            return false
        manager.excludedAppNames = [...excluded, trimmed]
        return true
    }

    function excludeTyped() {
        if (exclude(newExcludedAppName))
            newExcludedAppName = ""
    }

    function readmit(index: int) {
        const name = excluded[index]
        const byKey = chips.itemAt(index).button.activeFocus
        manager.excludedAppNames = excluded.filter(each => each !== name)
        if (byKey)
            takeFocus(chips, Math.min(index, chips.count - 1))
    }

    function excludeDetected(index: int) {
        const byKey = offers.itemAt(index).button.activeFocus
        exclude(detectedApps[index])
        if (byKey)
            takeFocus(offers, index)
    }

    // From where it was, as it is gone: to the next one that can be pressed.
    function takeFocus(list, index) {
        for (let i = Math.max(0, index); i < list.count; ++i) {
            if (list.itemAt(i).isPressable) {
                list.itemAt(i).button.forceActiveFocus(Qt.OtherFocusReason)
                return
            }
        }
        field.takeFocus()
    }

    Item {
        width: parent.width
        height: field.height

        HubTextField {
            id: field
            anchors { left: parent.left; right: addButton.left; rightMargin: Theme.spacing }
            placeholder: qsTr("App name (e.g. Slack)")
            onAccepted: editor.excludeTyped()
        }

        HubButton {
            id: addButton
            anchors { right: parent.right; verticalCenter: field.verticalCenter }
            implicitHeight: field.height
            text: qsTr("Add")
            onClicked: editor.excludeTyped()
        }
    }

    HelpText {
        width: parent.width
        text: qsTr("%1 excluded").arg(editor.excluded.length)
    }

    Flow {
        width: parent.width
        spacing: 6
        visible: chips.count > 0

        Repeater {
            id: chips
            model: editor.excluded

            ExcludedAppChip {
                required property int index
                required property string modelData
                name: modelData
                maximumWidth: editor.width
                onPressed: editor.readmit(index)
            }
        }
    }

    HelpText {
        width: parent.width
        text: qsTr("%1 detected").arg(editor.detectedApps.length)
    }

    Flow {
        width: parent.width
        spacing: 6
        visible: offers.count > 0

        Repeater {
            id: offers
            model: editor.detectedApps

            HubChip {
                required property int index
                required property string modelData
                name: modelData
                symbol: "plus"
                actionName: qsTr("Add %1").arg(name)
                isPressable: !editor.isExcluded(name)
                maximumWidth: editor.width
                onPressed: editor.excludeDetected(index)
            }
        }
    }
}
