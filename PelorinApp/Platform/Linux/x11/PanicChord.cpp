#include "Platform/Linux/x11/PanicChord.h"

#include <array>
#include <vector>

namespace quillon {

namespace {

constexpr xcb_keysym_t escapeKey = 0xFF1B;
constexpr std::uint16_t chord = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4;

/// Locks that may be on meanwhile: Caps, Num and Scroll Lock where they usually are.
constexpr std::array<std::uint16_t, 8> locks{
    0,
    XCB_MOD_MASK_LOCK,
    XCB_MOD_MASK_2,
    XCB_MOD_MASK_3,
    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2,
    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_3,
    XCB_MOD_MASK_2 | XCB_MOD_MASK_3,
    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_3,
};

} // namespace

PanicChord::PanicChord(const X11Connection& connection)
    : connection_(connection), symbols_(xcb_key_symbols_alloc(connection.get())) {}

bool PanicChord::take() {
    taken_ = true;
    std::vector<xcb_void_cookie_t> requests;
    const XcbOwned<xcb_keycode_t> keys(xcb_key_symbols_get_keycode(symbols_.get(), escapeKey));
    for (const auto* key = keys.get(); key != nullptr && *key != XCB_NO_SYMBOL; ++key) {
        for (const std::uint16_t lock : locks) {
            requests.push_back(xcb_grab_key_checked(connection_.get(), 0, connection_.root(),
                                                    chord | lock, *key, XCB_GRAB_MODE_ASYNC,
                                                    XCB_GRAB_MODE_ASYNC));
        }
    }
    bool tookAll = !requests.empty();
    for (const auto request : requests) {
        const XcbOwned<xcb_generic_error_t> error(xcb_request_check(connection_.get(), request));
        tookAll = tookAll && !error;
    }
    return tookAll;
}

void PanicChord::release() {
    taken_ = false;
    xcb_ungrab_key(connection_.get(), XCB_GRAB_ANY, connection_.root(), XCB_MOD_MASK_ANY);
    xcb_flush(connection_.get());
}

void PanicChord::follow(xcb_mapping_notify_event_t& change) {
    if (change.request == XCB_MAPPING_POINTER) {
        return;
    }
    xcb_refresh_keyboard_mapping(symbols_.get(), &change);
    if (taken_) {
        release();
        take();
    }
}

} // namespace quillon
