#include "Platform/Linux/keys/Keymap.h"

namespace quillon {

Keymap Keymap::read(const X11Connection& connection) {
    const auto* setup = xcb_get_setup(connection.get());
    const unsigned count = setup->max_keycode - setup->min_keycode + 1U;
    const XcbOwned<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection.get(),
        xcb_get_keyboard_mapping(connection.get(), setup->min_keycode,
                                 static_cast<std::uint8_t>(count)),
        nullptr));
    Keymap map;
    if (reply) {
        const auto* first = xcb_get_keyboard_mapping_keysyms(reply.get());
        map.keysyms_.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(reply.get()));
        map.first_ = setup->min_keycode;
        map.width_ = reply->keysyms_per_keycode;
    }
    return map;
}

unsigned Keymap::end() const {
    return width_ == 0 ? 0 : first_ + static_cast<unsigned>(keysyms_.size()) / width_;
}

xcb_keysym_t Keymap::at(unsigned keycode, unsigned column) const {
    const std::size_t index = std::size_t{keycode - first_} * width_ + column;
    return keycode >= first_ && column < width_ && index < keysyms_.size() ? keysyms_[index]
                                                                           : XCB_NO_SYMBOL;
}

std::vector<xcb_keycode_t> Keymap::keycodes(xcb_keysym_t keysym) const {
    constexpr unsigned columnsOfFirstLevel[] = {0, 2}; // of the first group and the second
    std::vector<xcb_keycode_t> found;
    for (const unsigned column : columnsOfFirstLevel) {
        for (unsigned keycode = first_; keycode < end(); ++keycode) {
            if (at(keycode, column) == keysym && (column == 0 || at(keycode, 0) != keysym)) {
                found.push_back(static_cast<xcb_keycode_t>(keycode));
            }
        }
    }
    return found;
}

std::vector<xcb_keycode_t> Keymap::unused() const {
    // The first one stands for the kernel's number zero, which no key has; the highest for keys of
    // rare laptops.
    std::vector<xcb_keycode_t> found;
    const auto addIfUnused = [this, &found](unsigned keycode) {
        if (givesOnly(static_cast<xcb_keycode_t>(keycode), XCB_NO_SYMBOL)) {
            found.push_back(static_cast<xcb_keycode_t>(keycode));
        }
    };
    if (first_ < end()) {
        addIfUnused(first_);
    }
    for (unsigned keycode = end(); keycode > first_ + 1;) {
        addIfUnused(--keycode);
    }
    return found;
}

bool Keymap::givesOnly(xcb_keycode_t keycode, xcb_keysym_t keysym) const {
    for (unsigned column = 0; column < width_; ++column) {
        const xcb_keysym_t found = at(keycode, column);
        if (found != keysym && found != XCB_NO_SYMBOL) {
            return false;
        }
    }
    return at(keycode, 0) == keysym;
}

} // namespace quillon
