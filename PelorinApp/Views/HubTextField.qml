import QtQuick

// A line to type into.
Rectangle {
    id: field

    property alias text: input.text
    property string placeholder
    signal accepted()

    implicitHeight: 28
    radius: Theme.controlRadius
    color: Theme.tinted(Theme.card, Theme.text, 0.04)
    border { width: 1; color: Theme.groove }
    antialiasing: true

    function takeFocus() {
        input.forceActiveFocus(Qt.OtherFocusReason)
    }

    HubText {
        anchors { fill: input }
        visible: input.text === "" && input.preeditText === ""
        text: field.placeholder
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        color: Theme.secondaryText
        Accessible.ignored: true
    }

    TextInput {
        id: input
        anchors { fill: parent; leftMargin: 8; rightMargin: 8 }
        activeFocusOnTab: true
        clip: true
        selectByMouse: true
        horizontalAlignment: TextInput.AlignLeft
        verticalAlignment: TextInput.AlignVCenter
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.textOnAccent
        font.pixelSize: Theme.bodySize
        onAccepted: field.accepted()

        Accessible.role: Accessible.EditableText
        Accessible.name: field.placeholder
        Accessible.focusable: true
        Accessible.editable: true
    }

    FocusRing {
        visible: input.activeFocus
        distance: 1
    }
}
