#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <memory>
#include <string>

#include <xcb/xcb_keysyms.h>

namespace quillon {

/// Ctrl+Super+Escape, for the whole screen: the user's way to get all input back, whatever the
/// program is doing. Only these keys together are taken, so nothing is noticed of other typing.
class PanicChord {
  public:
    static constexpr const char* name = "Ctrl+Super+Escape";

    explicit PanicChord(const X11Connection& connection);

    /// False when another program has the chord.
    bool take();
    void release();
    [[nodiscard]] bool isTaken() const { return taken_; }

    /// The keyboard may have changed: the chord follows the key.
    void follow(xcb_mapping_notify_event_t& change);

  private:
    struct Free {
        void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    };

    const X11Connection& connection_;
    std::unique_ptr<xcb_key_symbols_t, Free> symbols_;
    bool taken_ = false;
};

} // namespace quillon
