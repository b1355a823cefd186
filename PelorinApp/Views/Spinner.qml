import QtQuick

// Something is under way. It turns only while it is seen.
Item {
    id: spinner
    implicitWidth: 16
    implicitHeight: 16
    Accessible.ignored: true

    Repeater {
        model: 8

        Rectangle {
            required property int index
            x: spinner.width / 2 - 1
            width: 2
            height: 5
            radius: 1
            color: Theme.text
            opacity: 0.15 + index * 0.1
            antialiasing: true
            transform: Rotation {
                origin { x: 1; y: spinner.height / 2 }
                angle: index * 45
            }
        }
    }

    RotationAnimation on rotation {
        // An item does not know that its window is hidden.
        running: spinner.visible && spinner.Window.visibility !== Window.Hidden && !Theme.movesLess
        from: 0
        to: 360
        duration: 900
        loops: Animation.Infinite
    }
}
