import QtQuick
import Quillon.Views

// One border of the picture of a screen: bright when its edge is switched on.
Pressable {
    id: edge

    enum Side { Top, Bottom, Left, Right }

    required property int side
    required property string symbol
    required property string label
    required property bool checked
    signal toggled(bool checked)

    readonly property bool isLevel: side === EdgeBar.Top || side === EdgeBar.Bottom
    readonly property color ink: Qt.rgba(1, 1, 1, checked || Theme.highContrast ? 1 : 0.72)
    readonly property real faintness: Theme.highContrast ? 0.55 : 0.3

    width: isLevel ? parent.width - 64 : 112
    height: isLevel ? 40 : parent.height - 80
    onClicked: toggled(!checked)

    Accessible.role: Accessible.CheckBox
    Accessible.name: label
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: press()

    Rectangle {
        id: bar
        x: edge.side === EdgeBar.Right ? parent.width - width - 7 : edge.isLevel ? 0 : 7
        y: edge.side === EdgeBar.Bottom ? parent.height - height - 7 : edge.isLevel ? 7 : 0
        width: edge.isLevel ? parent.width : 6
        height: edge.isLevel ? 6 : parent.height
        radius: 3
        color: Qt.rgba(1, 1, 1, edge.checked ? 1 : edge.isHovered ? edge.faintness + 0.2 : edge.faintness)
        antialiasing: true
        Behavior on color { ColorAnimation { duration: Theme.fadeTime } }
    }

    // Beside the bar, with the symbol first or on top.
    Grid {
        id: legend
        x: edge.side === EdgeBar.Left ? 20 : edge.isLevel ? Math.round((parent.width - width) / 2)
                                                          : parent.width - width - 20
        y: edge.side === EdgeBar.Top ? 18 : edge.isLevel ? parent.height - height - 18
                                                         : Math.round((parent.height - height) / 2)
        flow: edge.isLevel ? Grid.LeftToRight : Grid.TopToBottom
        rows: edge.isLevel ? 1 : 2
        columns: edge.isLevel ? 2 : 1
        spacing: edge.isLevel ? 4 : 2
        verticalItemAlignment: Grid.AlignVCenter
        horizontalItemAlignment: edge.side === EdgeBar.Right ? Grid.AlignRight : Grid.AlignLeft

        Symbol {
            width: 14
            height: 14
            name: edge.symbol
            color: edge.ink
        }

        HubText {
            width: Math.min(implicitWidth, edge.width - (edge.isLevel ? 18 : 24))
            text: edge.label
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
            color: edge.ink
            font.pixelSize: Theme.smallSize - 1
            Accessible.ignored: true
        }
    }

    FocusRing {
        distance: -2
        border.color: "#ffffff"
    }
}
