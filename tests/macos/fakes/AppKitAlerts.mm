#include "FakeAlerts.h"

#include "Foundation.h"

using namespace quillon::fakes;

@implementation NSAlert
- (NSString*)messageText {
    return stringOf(stateOf<FakeAlert>(self).messageText);
}
- (void)setMessageText:(NSString*)text {
    stateOf<FakeAlert>(self).messageText = utf8(text);
}
- (NSString*)informativeText {
    return stringOf(stateOf<FakeAlert>(self).informativeText);
}
- (void)setInformativeText:(NSString*)text {
    stateOf<FakeAlert>(self).informativeText = utf8(text);
}
- (NSButton*)addButtonWithTitle:(NSString*)title {
    stateOf<FakeAlert>(self).buttons.push_back(utf8(title));
    return nil;
}
- (NSArray*)buttons {
    return arrayOf({});
}
- (NSAlertStyle)alertStyle {
    return stateOf<FakeAlert>(self).style;
}
- (void)setAlertStyle:(NSAlertStyle)style {
    stateOf<FakeAlert>(self).style = style;
}
- (NSModalResponse)runModal {
    fakeAlerts().push_back(stateOf<FakeAlert>(self));
    return 1000;
}
@end

namespace quillon::fakes {

std::vector<FakeAlert>& fakeAlerts() {
    static std::vector<FakeAlert> alerts;
    return alerts;
}

} // namespace quillon::fakes
