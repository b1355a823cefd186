import QtQuick

// Around the item that keys go to, for those who use them.
Rectangle {
    property Item target: parent
    property real distance: 2

    anchors { fill: target; margins: -distance }
    visible: target.activeFocus
    radius: Theme.controlRadius + distance
    color: "transparent"
    border { width: 2; color: Theme.accent }
    antialiasing: true
}
