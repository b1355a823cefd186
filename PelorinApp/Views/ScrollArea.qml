import QtQuick

// What is higher than the window: it scrolls by wheel, drag and keys, and by itself to the item that
// keys go to.
Flickable {
    id: area

    default property alias content: column.data
    property alias spacing: column.spacing
    property real padding: Theme.margin

    contentWidth: width
    contentHeight: column.height + 2 * padding
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    function scrollTo(y) {
        contentY = Math.max(0, Math.min(y, contentHeight - height))
    }

    // So far that the item is seen whole, or its upper end where it is too high.
    function show(item) {
        const top = item.mapToItem(column, 0, 0).y
        const bottom = top + item.height + 2 * padding
        if (top < contentY)
            scrollTo(top)
        else if (bottom > contentY + height)
            scrollTo(Math.min(bottom - height, top))
    }

    function contains(item) {
        for (let each = item; each; each = each.parent) {
            if (each === column)
                return true
        }
        return false
    }

    readonly property Item focused: Window.activeFocusItem
    property Item followed: null // it stays in sight until somebody scrolls
    onFocusedChanged: {
        followed = focused && contains(focused) ? focused : null
        follow()
    }

    function follow() {
        if (followed)
            show(followed)
    }

    Keys.onPressed: event => {
        const line = 40
        const page = height - 2 * padding
        switch (event.key) {
        case Qt.Key_Down: scrollTo(contentY + line); break
        case Qt.Key_Up: scrollTo(contentY - line); break
        case Qt.Key_PageDown: scrollTo(contentY + page); break
        case Qt.Key_PageUp: scrollTo(contentY - page); break
        case Qt.Key_Home: scrollTo(0); break
        case Qt.Key_End: scrollTo(contentHeight); break
        default: return
        }
        followed = null
        event.accepted = true
    }

    onMovementStarted: followed = null
    onContentHeightChanged: {
        scrollTo(contentY)
        follow()
    }

    Column {
        id: column
        x: area.padding
        y: area.padding
        width: area.width - 2 * area.padding
        spacing: Theme.margin
    }

    Rectangle {
        parent: area
        anchors.right: parent.right
        anchors.rightMargin: 4
        y: 4 + (area.height - 8 - height) * area.contentY / Math.max(1, area.contentHeight - area.height)
        width: 4
        height: Math.max(24, (area.height - 8) * area.visibleArea.heightRatio)
        radius: 2
        visible: area.contentHeight > area.height
        color: Theme.tinted(Theme.surface, Theme.text, area.moving ? 0.5 : 0.25)
        Accessible.ignored: true
    }
}
