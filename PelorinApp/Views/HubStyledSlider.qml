import QtQuick
import Quillon.Views

// Shows a number of a closed range and asks with moved() for another one: by pointer, wherever on it
// the drag begins, by keys, and by assistive technology.
Item {
    id: slider

    property real value
    property real minimumValue: 0
    property real maximumValue: 1
    property real step: 0 // 0: any value
    property string minimumText: whole(minimumValue)
    property string maximumText: whole(maximumValue)
    property string purpose // what it sets, for those who do not see what stands above it
    signal moved(real value)

    property bool takenByPointer: false // then the keys need not be shown the way

    readonly property real thumb: 16
    readonly property real track: Math.max(0, element.width - thumb)
    readonly property real fraction: maximumValue > minimumValue
        ? Math.max(0, Math.min(1, (value - minimumValue) / (maximumValue - minimumValue))) : 0

    implicitHeight: 24

    function whole(number: real): string { return scale.whole(number) }

    function moveBy(amount) {
        moved(scale.snapped(value + amount))
    }

    SliderScale {
        id: scale
        lower: slider.minimumValue
        upper: slider.maximumValue
        step: slider.step
    }

    component End: HelpText {
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(24, implicitWidth)
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }

    End {
        id: lowest
        anchors.left: parent.left
        horizontalAlignment: Text.AlignLeft
        text: slider.minimumText
    }

    End {
        id: highest
        anchors.right: parent.right
        horizontalAlignment: Text.AlignRight
        text: slider.maximumText
    }

    // What keys and assistive technology meet.
    Item {
        id: element

        readonly property real shown: Number(scale.hundredths(slider.value))
        readonly property real minimumValue: slider.minimumValue
        readonly property real maximumValue: slider.maximumValue
        readonly property real stepSize: slider.step > 0 ? slider.step : 1
        property real value: shown
        onValueChanged: {
            const wanted = value
            if (wanted !== shown) { // written by assistive technology
                value = Qt.binding(() => shown)
                if (isFinite(wanted))
                    slider.moved(scale.snapped(wanted))
            }
        }

        anchors {
            left: lowest.right; right: highest.left; top: parent.top; bottom: parent.bottom
            leftMargin: 4; rightMargin: 4
        }
        activeFocusOnTab: true

        Accessible.role: Accessible.Slider
        Accessible.name: qsTr("Slider")
        Accessible.description: slider.purpose === "" ? scale.hundredths(slider.value)
                              : "%1: %2".arg(slider.purpose).arg(scale.hundredths(slider.value))
        Accessible.focusable: true
        Accessible.onIncreaseAction: slider.moveBy(element.stepSize)
        Accessible.onDecreaseAction: slider.moveBy(-element.stepSize)

        onActiveFocusChanged: slider.takenByPointer = area.pressed
        Keys.onPressed: event => {
            slider.takenByPointer = false
            const page = Math.max(slider.step, (slider.maximumValue - slider.minimumValue) / 10)
            const onwards = element.LayoutMirroring.enabled ? -element.stepSize : element.stepSize
            switch (event.key) {
            case Qt.Key_Up: slider.moveBy(element.stepSize); break
            case Qt.Key_Down: slider.moveBy(-element.stepSize); break
            case Qt.Key_Right: slider.moveBy(onwards); break
            case Qt.Key_Left: slider.moveBy(-onwards); break
            case Qt.Key_PageUp: slider.moveBy(page); break
            case Qt.Key_PageDown: slider.moveBy(-page); break
            case Qt.Key_Home: slider.moved(slider.minimumValue); break
            case Qt.Key_End: slider.moved(slider.maximumValue); break
            default: return
            }
            event.accepted = true
        }

        Rectangle {
            id: groove
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
            height: 4
            radius: 2
            color: Theme.groove
            antialiasing: true

            Rectangle { // what the value has of the range
                anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
                width: knob.place + slider.thumb / 2
                radius: 2
                color: Theme.accent
                antialiasing: true
            }
        }

        Rectangle {
            id: knob
            readonly property real place: Math.round(slider.fraction * slider.track)
            x: element.LayoutMirroring.enabled ? slider.track - place : place
            anchors.verticalCenter: parent.verticalCenter
            width: slider.thumb
            height: slider.thumb
            radius: slider.thumb / 2
            color: area.pressed ? "#e6e6e6" : "#ffffff"
            border { width: 1; color: Theme.knobBorder }
            antialiasing: true
        }

        FocusRing {
            distance: 1
            visible: element.activeFocus && !slider.takenByPointer
        }
    }

    MouseArea {
        id: area
        anchors.fill: parent
        preventStealing: true // else what lies around it scrolls

        function report(x) {
            const along = area.mapToItem(element, x, 0).x
            slider.moved(scale.valueAt(element.LayoutMirroring.enabled ? element.width - along : along,
                                       slider.thumb, slider.track))
        }
        onPressed: mouse => {
            element.forceActiveFocus(Qt.MouseFocusReason)
            report(mouse.x)
        }
        onPositionChanged: mouse => report(mouse.x)
    }
}
