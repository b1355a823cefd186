#include "Platform/MacOS/NativeButton.h"

#include "Platform/MacOS/NativeLooks.h"
#include "Platform/MacOS/NativeText.h"

#include <utility>

namespace quillon {

bool NativeButton::update() {
    const ButtonCell* const cell = button_.cell();
    State state{button_.look(), cell == nullptr ? std::nullopt : std::optional(cell->alignment),
                button_.sendsActionOn(), button_.isEnabled(), button_.refusesFirstResponder()};
    if (!applied_ || applied_->look != state.look) {
        applyFrameOfLook(state.look, applied_ ? applied_->look : ButtonLook{});
        applyLook(state.look);
    }
    // Without these it would not work: the system may have changed them, so they are set again.
    [native_ setTarget:target_.object()];
    [native_ setAction:target_.selectorOf(button_.action(), button_)];
    [native_ sendActionOn:static_cast<NSEventMask>(state.sendsActionOn)];
    [native_ setEnabled:state.isEnabled];
    [native_ setRefusesFirstResponder:state.refusesFirstResponder];
    [native_ setAlignment:nativeAlignment(state.look.alignment)];
    if (state.cellAlignment && [[native_ cell] isKindOfClass:[NSButtonCell class]]) {
        [[native_ cell] setAlignment:nativeAlignment(*state.cellAlignment)];
    }
    const bool isChanged = state != applied_;
    applied_ = std::move(state);
    return isChanged;
}

/// Only what is asked for otherwise than is usual: a button of the system's own making comes with
/// the frame that suits its place.
void NativeButton::applyFrameOfLook(const ButtonLook& look, const ButtonLook& before) {
    if (look.isBordered != before.isBordered) {
        [native_ setBordered:look.isBordered];
    }
    if (look.bezelStyle != before.bezelStyle) {
        [native_ setBezelStyle:look.bezelStyle == BezelStyle::shadowlessSquare
                                   ? NSBezelStyleShadowlessSquare
                                   : NSBezelStyleRounded];
    }
    if (look.showsFocusRing != before.showsFocusRing) {
        [native_
            setFocusRingType:look.showsFocusRing ? NSFocusRingTypeDefault : NSFocusRingTypeNone];
    }
}

void NativeButton::applyLook(const ButtonLook& look) {
    // Either title replaces the other; the one that has text comes last.
    [native_ setAttributedTitle:[[NSAttributedString alloc]
                                    initWithString:nativeText(look.attributedTitle)]];
    if (look.attributedTitle.empty()) {
        [native_ setTitle:nativeText(look.title)];
    }
    if (!look.title.empty()) {
        [native_ setFont:nativeFont(look.titleFont)];
    }
    [native_ setContentTintColor:look.contentTintColor ? nativeColor(*look.contentTintColor) : nil];
    [native_ setImage:look.image ? nativeImage(*look.image) : nil];
    [native_ setImageScaling:nativeScaling(look.imageScaling)];
    [native_ setImagePosition:nativePosition(look.imagePosition)];
}

} // namespace quillon
