import QtQuick

// A number of steps.
HubLabeledSliderRow {
    minimumValue: 1
    maximumValue: 10
    step: 1
}
