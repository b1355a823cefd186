#include "Platform/Linux/keys/KeyInjector.h"

#include <algorithm>
#include <chrono>

#include <xcb/xtest.h>

namespace quillon {

namespace {

/// How long programs may take to grab a key that the keyboard has got only now.
constexpr std::chrono::milliseconds grabPatience{100};

constexpr long mostTried = 8; // keycodes that are looked at; somebody may have grabbed them all

/// While it lives, the server deals with the requests of this connection only.
class ServerGrab {
  public:
    explicit ServerGrab(const X11Connection& connection) : connection_(connection) {
        xcb_grab_server(connection.get());
    }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;
    ~ServerGrab() {
        xcb_ungrab_server(connection_.get());
        xcb_flush(connection_.get());
    }

  private:
    const X11Connection& connection_;
};

} // namespace

bool KeyInjector::connect() {
    if (connection_ && connection_->isBroken()) {
        probe_.reset();
        connection_.reset();
    }
    if (!connection_) {
        keymap_.reset();
        connection_ = X11Connection::open();
        if (connection_) {
            probe_.emplace(*connection_);
        }
    }
    return connection_ && connection_->hasExtension(&xcb_test_id);
}

/// The server tells every client of changes of the keyboard.
void KeyInjector::readEvents() {
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        probe_->note(*event);
        if (event->response_type == XCB_MAPPING_NOTIFY) {
            keymap_.reset();
        }
    }
}

const Keymap& KeyInjector::keymap() {
    readEvents();
    if (!keymap_) {
        keymap_ = Keymap::read(*connection_);
    }
    return *keymap_;
}

bool KeyInjector::isGrabbed(xcb_keysym_t keysym) { return connect() && grabbedKeycode(keysym); }

bool KeyInjector::isGrabbedNow(xcb_keycode_t keycode) {
    const bool isGrabbed = probe_->isGrabbed(keycode);
    readEvents();
    return isGrabbed;
}

/// Programs take one of the keysym's keycodes, or all.
std::optional<xcb_keycode_t> KeyInjector::grabbedKeycode(xcb_keysym_t keysym) {
    const auto keycodes = keymap().keycodes(keysym);
    const auto grabbed =
        std::find_if(keycodes.begin(), keycodes.end(),
                     [this](xcb_keycode_t keycode) { return isGrabbedNow(keycode); });
    return grabbed == keycodes.end() ? std::nullopt : std::optional(*grabbed);
}

bool KeyInjector::stroke(xcb_keysym_t keysym) {
    if (!connect()) {
        return false;
    }
    const auto keycodes = keymap().keycodes(keysym);
    auto keycode = keycodes.size() > 1 ? grabbedKeycode(keysym) : std::nullopt;
    if (!keycode && !keycodes.empty()) {
        keycode = keycodes.front();
    }
    if (!keycode) {
        keycode = borrow(keysym);
    }
    if (!keycode) {
        return false;
    }
    for (const std::uint8_t type : {XCB_KEY_PRESS, XCB_KEY_RELEASE}) {
        xcb_test_fake_input(connection_->get(), type, *keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                            0);
    }
    return xcb_flush(connection_->get()) > 0;
}

/// One that no program has still grabbed from when it was another key, if possible.
std::optional<xcb_keycode_t> KeyInjector::unusedKeycode() {
    const auto unused = keymap().unused();
    const auto end = unused.begin() + std::min<long>(mostTried, std::ssize(unused));
    const auto free = std::find_if(
        unused.begin(), end, [this](xcb_keycode_t keycode) { return !isGrabbedNow(keycode); });
    if (free != end) {
        return *free;
    }
    return unused.empty() ? std::nullopt : std::optional(unused.front());
}

std::optional<xcb_keycode_t> KeyInjector::borrow(xcb_keysym_t keysym) {
    const auto keycode = unusedKeycode();
    if (!keycode) {
        return std::nullopt;
    }
    {
        const ServerGrab alone(*connection_); // others may have found the same one
        if (!Keymap::read(*connection_).givesOnly(*keycode, XCB_NO_SYMBOL)) {
            return std::nullopt;
        }
        setKeysym(*keycode, keysym);
    }
    borrowed_.push_back({*keycode, keysym});
    awaitGrab(*keycode);
    return keycode;
}

void KeyInjector::setKeysym(xcb_keycode_t keycode, xcb_keysym_t keysym) const {
    xcb_change_keyboard_mapping(connection_->get(), 1, keycode, 1, &keysym);
}

void KeyInjector::awaitGrab(xcb_keycode_t keycode) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + grabPatience;
    while (!isGrabbedNow(keycode) && Clock::now() < deadline && pause_()) {
    }
}

void KeyInjector::giveBack() {
    if (borrowed_.empty() || !connect()) {
        return;
    }
    {
        const ServerGrab alone(*connection_);
        const Keymap now = Keymap::read(*connection_);
        for (const auto& [keycode, keysym] : borrowed_) {
            if (now.givesOnly(keycode, keysym)) {
                setKeysym(keycode, XCB_NO_SYMBOL);
            }
        }
    }
    connection_->sync();
    borrowed_.clear();
}

} // namespace quillon
