import QtQuick

// A switch with what it switches beside it. It shows `checked` and asks with toggled() for the other.
Column {
    id: toggle

    property string text
    property string help
    property bool checked: false
    signal toggled(bool checked)

    width: parent ? parent.width : 0
    spacing: 2

    Pressable {
        id: control

        width: parent.width
        height: Math.max(24, label.height)
        onClicked: toggle.toggled(!toggle.checked)

        Accessible.role: Accessible.CheckBox
        Accessible.name: toggle.text
        Accessible.description: toggle.help
        Accessible.checkable: true
        Accessible.checked: toggle.checked
        Accessible.onToggleAction: press()

        HubText {
            id: label
            anchors {
                left: parent.left; right: slot.left; rightMargin: Theme.spacing
                verticalCenter: parent.verticalCenter
            }
            text: toggle.text
            Accessible.ignored: true
        }

        Rectangle {
            id: slot
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            width: 36
            height: 20
            radius: 10
            color: toggle.checked ? Theme.accent : Theme.groove
            border { width: toggle.checked ? 0 : 1; color: Theme.knobBorder }
            antialiasing: true
            Behavior on color { ColorAnimation { duration: Theme.fadeTime } }

            Rectangle {
                readonly property bool isRight: toggle.checked !== control.LayoutMirroring.enabled
                x: isRight ? slot.width - width - 2 : 2
                y: 2
                width: 16
                height: 16
                radius: 8
                color: control.isHeld ? "#e6e6e6" : "#ffffff"
                border { width: 1; color: Theme.knobBorder }
                antialiasing: true
                Behavior on x { NumberAnimation { duration: Theme.fadeTime; easing.type: Easing.OutCubic } }
            }
        }

        FocusRing {}
    }

    Item { // beneath the label, on whichever side that is
        width: parent.width
        height: help.height
        visible: toggle.help !== ""

        HelpText {
            id: help
            anchors { left: parent.left; right: parent.right; rightMargin: slot.width + Theme.spacing }
            text: toggle.help
        }
    }
}
