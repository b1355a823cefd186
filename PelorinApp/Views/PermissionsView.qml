import QtQuick
import Quillon.Views

// What keeps the program from the user's input, and what can be done about it; in a window of its
// own.
FocusScope {
    id: view

    required property HubModel hub
    property bool hasInputExtension: true
    property bool hasTestExtension: true
    property bool isWayland: false
    readonly property bool isMissing: hub.isPermissionMissing
    readonly property string title: qsTr("Permissions of Quillon")

    implicitWidth: 440
    implicitHeight: Math.min(600, area.contentHeight + close.height + Theme.margin)

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    Keys.onEscapePressed: Window.window.close()
    Keys.forwardTo: area
    Accessible.role: Accessible.Pane
    Accessible.name: title

    ThemeOptions { hub: view.hub }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    component Reason: ToolSettingsSectionCard {
        id: reason

        property string remedy

        HubText {
            width: parent.width
            text: reason.remedy
            font.pixelSize: Theme.smallSize
        }
    }

    ScrollArea {
        id: area
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: close.top }
        spacing: 12

        Item {
            width: parent.width
            height: Math.max(symbol.height, head.height)

            Symbol {
                id: symbol
                anchors { left: parent.left; verticalCenter: parent.verticalCenter }
                width: 28
                height: 28
                name: view.isMissing ? "exclamationmark.triangle.fill" : "power"
                color: view.isMissing ? Theme.warning : Theme.accentInk
            }

            HubText {
                id: head
                anchors {
                    left: symbol.right; leftMargin: 12; right: parent.right
                    verticalCenter: parent.verticalCenter
                }
                text: view.isMissing ? qsTr("Quillon cannot see or send input here")
                                     : qsTr("Quillon has all permissions that it needs")
                font { pixelSize: Theme.bodySize + 2; weight: Font.DemiBold }
            }
        }

        HubText {
            width: parent.width
            text: view.isMissing
                ? qsTr("Gestures need it. Until it is granted the tools rest, and all your input goes where it always went. Settings can be changed meanwhile.")
                : qsTr("There is nothing to grant. If a tool seems to rest, see that it is switched on and that one of its edges is active.")
            color: Theme.secondaryText
        }

        Reason {
            visible: view.isMissing && !view.hasTestExtension
            title: qsTr("Programs may not send input (XTEST is off)")
            remedy: qsTr("The X server was started without this extension. Take “-extension XTEST” out of the command that starts it, or the line that disables it out of /etc/X11/xorg.conf.d, and log in again. Over ssh, connect with “ssh -Y” instead of “ssh -X”.")
        }

        Reason {
            visible: view.isMissing && !view.hasInputExtension
            title: qsTr("Programs may not see input (XInput 2.1 is missing)")
            remedy: qsTr("Some servers for remote desktops do not have this extension. Use Quillon on the computer’s own desktop, or with another server. Over ssh, connect with “ssh -Y” instead of “ssh -X”.")
        }

        Reason {
            visible: view.isWayland
            title: qsTr("This is a Wayland session")
            remedy: qsTr("Wayland shows programs only the input of their own windows, so gestures work over X11 programs only. For all of them, log out and choose a session with “X11” or “Xorg” in its name.")
        }
    }

    HubButton {
        id: close
        anchors {
            right: parent.right; rightMargin: Theme.margin; bottom: parent.bottom
            bottomMargin: Theme.margin
        }
        implicitHeight: 28
        width: Math.max(90, implicitWidth)
        focus: true
        text: qsTr("Close")
        onClicked: Window.window.close()
    }
}
