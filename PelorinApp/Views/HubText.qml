import QtQuick

// A text to be read: assistive technology says it as it is written.
Text {
    color: Theme.text
    font.pixelSize: Theme.bodySize
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft // where lines begin, whichever script the text is in
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
