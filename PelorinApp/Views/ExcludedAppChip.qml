import QtQuick

// An application in which a tool keeps still.
HubChip {
    symbol: "xmark"
    actionName: qsTr("Remove %1").arg(name)
}
