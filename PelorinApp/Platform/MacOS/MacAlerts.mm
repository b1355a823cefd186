#include "Platform/MacOS/MacAlerts.h"

#include "Platform/MacOS/NativeText.h"

#include <AppKit/AppKit.h>

namespace quillon {

namespace {

NSAlertStyle nativeStyle(AlertStyle style) {
    switch (style) {
    case AlertStyle::informational:
        break;
    case AlertStyle::warning:
        return NSAlertStyleWarning;
    case AlertStyle::critical:
        return NSAlertStyleCritical;
    }
    return NSAlertStyleInformational;
}

} // namespace

void MacAlerts::runModal(const Alert& alert) {
    NSAlert* const native = [[NSAlert alloc] init];
    [native setAlertStyle:nativeStyle(alert.style)];
    [native setMessageText:nativeText(alert.messageText)];
    [native setInformativeText:nativeText(alert.informativeText)];
    for (const std::string& button : alert.buttons) {
        [native addButtonWithTitle:nativeText(button)];
    }
    [native runModal];
}

} // namespace quillon
