import QtQuick

// What the popover shows.
Item {
    id: root

    implicitWidth: 360
    implicitHeight: 480

    property bool composited: true
    readonly property real cornerRadius: Theme.cornerRadius
    readonly property bool sheetAttached: false

    // True when there was something to leave.
    function goBack(): bool {
        return false
    }

    Accessible.role: Accessible.Pane
    Accessible.name: title.text

    // Where nothing is blended the corners are cut along pixels: what the rounded edge blends
    // with is its own colour.
    Rectangle {
        anchors.fill: parent
        visible: !root.composited
        color: Theme.border
    }

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: Theme.surface
        border { width: 1; color: Theme.border }
        antialiasing: true
    }

    Item {
        id: titleRow
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 1 }
        height: 52

        Text {
            id: title
            anchors { left: parent.left; leftMargin: Theme.margin; verticalCenter: parent.verticalCenter }
            text: qsTr("Quillon")
            color: Theme.text
            font { family: Theme.titleFamily; pixelSize: 26 }
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: 1
            color: Theme.separator
        }
    }

    Text {
        anchors {
            left: parent.left; right: parent.right; top: titleRow.bottom; bottom: parent.bottom
            margins: Theme.margin * 2
        }
        text: qsTr("Tools are set up with\n“quillon defaults” for now.")
        color: Theme.secondaryText
        font.pixelSize: Theme.bodySize
        lineHeight: 1.2
        wrapMode: Text.WordWrap
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text.replace("\n", " ")
    }
}
