import QtQuick

// A picture of a screen whose borders switch a manager's edges on and off.
Column {
    id: selector

    required property QtObject manager

    width: parent ? parent.width : 0
    spacing: Theme.spacing

    Rectangle {
        id: picture

        // Left is left on the screen, from wherever one reads.
        LayoutMirroring.enabled: false
        LayoutMirroring.childrenInherit: true

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(248, parent.width)
        height: 144
        radius: 10
        antialiasing: true
        border { width: 1; color: Qt.rgba(1, 1, 1, 0.14) }
        gradient: Gradient {
            GradientStop { position: 0; color: "#3d4353" }
            GradientStop { position: 1; color: "#262a35" }
        }

        Keys.onUpPressed: topBar.forceActiveFocus(Qt.OtherFocusReason)
        Keys.onDownPressed: bottomBar.forceActiveFocus(Qt.OtherFocusReason)
        Keys.onLeftPressed: leftBar.forceActiveFocus(Qt.OtherFocusReason)
        Keys.onRightPressed: rightBar.forceActiveFocus(Qt.OtherFocusReason)

        EdgeBar {
            id: topBar
            anchors { top: parent.top; horizontalCenter: parent.horizontalCenter }
            side: EdgeBar.Top
            symbol: "arrow.up"
            label: qsTr("Top edge")
            checked: selector.manager.topEdgeEnabled
            onToggled: checked => selector.manager.topEdgeEnabled = checked
        }

        EdgeBar {
            id: bottomBar
            anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter }
            side: EdgeBar.Bottom
            symbol: "arrow.down"
            label: qsTr("Bottom edge")
            checked: selector.manager.bottomEdgeEnabled
            onToggled: checked => selector.manager.bottomEdgeEnabled = checked
        }

        EdgeBar {
            id: leftBar
            anchors { left: parent.left; verticalCenter: parent.verticalCenter }
            side: EdgeBar.Left
            symbol: "arrow.left"
            label: qsTr("Left edge")
            checked: selector.manager.leftEdgeEnabled
            onToggled: checked => selector.manager.leftEdgeEnabled = checked
        }

        EdgeBar {
            id: rightBar
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            side: EdgeBar.Right
            symbol: "arrow.right"
            label: qsTr("Right edge")
            checked: selector.manager.rightEdgeEnabled
            onToggled: checked => selector.manager.rightEdgeEnabled = checked
        }
    }

    HelpText {
        width: parent.width
        text: qsTr("Click a highlighted border to enable that edge.")
    }
}
