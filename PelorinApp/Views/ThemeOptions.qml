import QtQuick
import Quillon.Views

// What the user wants of all programs goes into the theme: part of each window's root.
QtObject {
    id: options

    required property HubModel hub

    readonly property Binding motion: Binding {
        target: Theme
        property: "movesLess"
        value: options.hub.reducesMotion
    }
    readonly property Binding contrast: Binding {
        target: Theme
        property: "highContrast"
        value: options.hub.increasesContrast
    }
}
