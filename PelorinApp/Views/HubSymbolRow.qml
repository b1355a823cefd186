import QtQuick
import Quillon.Views

// Says in a line what its symbols stand for.
Item {
    id: row

    property var symbols: [] // their names
    property string text
    property string meaning // of the symbols, for those who do not see them

    width: parent ? parent.width : 0
    height: Math.max(20, label.height)

    Row {
        id: drawings
        anchors { left: parent.left; verticalCenter: parent.verticalCenter }
        spacing: 2

        Repeater {
            model: row.symbols

            Symbol {
                required property string modelData
                width: 18
                height: 18
                name: modelData
                color: Theme.accentInk
            }
        }
    }

    HubText {
        id: label
        anchors {
            left: drawings.right; leftMargin: 10; right: parent.right; verticalCenter: parent.verticalCenter
        }
        text: row.text
        Accessible.description: row.meaning
    }
}
