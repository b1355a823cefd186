import QtQuick

// What can be pressed: by pointer, by Space and Return, and by assistive technology. A key that is
// held presses once.
Item {
    id: pressable

    readonly property alias isHovered: area.containsMouse
    readonly property alias isHeld: area.pressed
    signal clicked()

    activeFocusOnTab: true

    function press() {
        if (enabled)
            clicked()
    }

    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Space && event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter)
            return
        event.accepted = true
        if (!event.isAutoRepeat)
            press()
    }

    Accessible.role: Accessible.Button
    Accessible.focusable: true
    Accessible.onPressAction: press()

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onClicked: pressable.press()
    }
}
