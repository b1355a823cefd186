import QtQuick

// Beneath a control, what it does; not there when there is nothing to say.
HubText {
    visible: text !== ""
    color: Theme.secondaryText
    font.pixelSize: Theme.smallSize
}
