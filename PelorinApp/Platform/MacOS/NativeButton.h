#pragma once

#include "Platform/Button.h"
#include "Platform/MacOS/ActionTarget.h"

#include <AppKit/AppKit.h>

#include <optional>

namespace quillon {

/// Keeps a button of the system's in step with one of ours. Main thread only.
class NativeButton {
  public:
    /// The button must outlive this object.
    NativeButton(Button& button, NSButton* native) : button_(button), native_(native) {}

    /// Gives the system's button what has changed. False when nothing has.
    bool update();

  private:
    /// What the system is told by setters, but for the action, which cannot be compared.
    struct State {
        ButtonLook look;
        std::optional<TextAlignment> cellAlignment;
        std::uint64_t sendsActionOn = 0;
        bool isEnabled = true;
        bool refusesFirstResponder = false;
        bool operator==(const State&) const = default;
    };
    void applyLook(const ButtonLook& look);
    void applyFrameOfLook(const ButtonLook& look, const ButtonLook& before);

    Button& button_;
    NSButton* native_;
    ActionTarget target_;
    std::optional<State> applied_;
};

} // namespace quillon
