import QtQuick

// How far from an edge a tool is at work.
HubLabeledSliderRow {
    required property QtObject manager

    title: qsTr("Edge sensitivity")
    unit: qsTr("%1 px")
    minimumValue: 10
    maximumValue: 100
    value: manager.edgeSensitivity
    onMoved: value => manager.edgeSensitivity = value
}
