import QtQuick

// What a slider sets and to what it is set, with the slider beneath.
Column {
    id: row

    property string title
    property string unit: "%1" // with the number in it
    property string help
    property bool isHeading: true // of its card
    property alias value: slider.value
    property alias minimumValue: slider.minimumValue
    property alias maximumValue: slider.maximumValue
    property alias step: slider.step
    signal moved(real value)

    width: parent ? parent.width : 0
    spacing: 6

    Item {
        width: parent.width
        height: Math.max(title.height, amount.height)

        HubText {
            id: title
            anchors { left: parent.left; right: amount.left; rightMargin: Theme.spacing }
            text: row.title
            font.weight: row.isHeading ? Font.DemiBold : Font.Normal
        }

        HubText {
            id: amount
            anchors { right: parent.right; baseline: title.baseline }
            text: row.unit.arg(slider.whole(row.value))
            color: Theme.secondaryText
            wrapMode: Text.NoWrap
        }
    }

    HubStyledSlider {
        id: slider
        width: parent.width
        purpose: row.title
        onMoved: value => row.moved(value)
    }

    HelpText {
        width: parent.width
        text: row.help
    }
}
