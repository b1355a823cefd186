import QtQuick
import Quillon.Views

// For those who want to give something.
HubButton {
    required property HubModel hub

    symbol: "cup.and.saucer.fill"
    text: qsTr("Donate")
    onClicked: hub.openDonationPage()
}
