#include "Platform/MacOS/ActionTarget.h"

#include <objc/runtime.h>

@interface QuillonActionTarget : NSObject {
  @public
    quillon::ActionTarget* owner; // null: gone
}
@end

@implementation QuillonActionTarget
@end

namespace quillon {

namespace {

/// Stands behind every selector. One whose name has no colon gets no sender, and needs none here.
void receive(id target, SEL selector) {
    if (ActionTarget* const owner = static_cast<QuillonActionTarget*>(target)->owner) {
        owner->received(selector);
    }
}

} // namespace

ActionTarget::ActionTarget() {
    QuillonActionTarget* const made = [[QuillonActionTarget alloc] init];
    made->owner = this;
    object_ = made;
}

ActionTarget::~ActionTarget() { static_cast<QuillonActionTarget*>(object_)->owner = nullptr; }

SEL ActionTarget::selectorOf(const Action& action, Sender& sender) {
    if (action.name.empty()) {
        return nullptr;
    }
    const bool takesSender = action.name.back() == ':';
    const SEL selector = sel_registerName(action.name.c_str());
    // Does nothing where an earlier action of this name has had it done.
    class_addMethod([QuillonActionTarget class], selector, reinterpret_cast<IMP>(&receive),
                    takesSender ? "v@:@" : "v@:");
    performed_[action.name] = [perform = action.perform, &sender] {
        if (perform) {
            perform(&sender);
        }
    };
    return selector;
}

void ActionTarget::received(SEL selector) {
    const auto found = performed_.find(sel_getName(selector));
    if (found != performed_.end()) {
        const auto perform = found->second; // a copy: what it does may replace it
        perform();
    }
}

} // namespace quillon
