#include "WindowsFixture.h"

#include "Platform/Linux/x11/X11Properties.h"

#include <QElapsedTimer>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

#include <xcb/shape.h>
#include <xcb/xcb_keysyms.h>
#include <xcb/xtest.h>

namespace quillon {

namespace {
constexpr const char* busVariable = "DBUS_SESSION_BUS_ADDRESS";
}

WindowsFixture::WindowsFixture(const std::string& resources, const std::string& managerProgram,
                               const std::string& command) {
    xcb_change_property(other->get(), XCB_PROP_MODE_REPLACE, other->root(),
                        XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(resources.size()), resources.data());
    other->sync();
    if (!managerProgram.empty()) {
        std::vector<std::string> words{managerProgram};
        if (managerProgram == "xfwm4") {
            words.emplace_back("--compositor=off");
            // It asks for its settings on a bus, and ends when there is none.
            bus_.emplace(folder_.path() / "bus");
            qputenv(busVariable, QByteArray::fromStdString(bus_->address()));
        }
        manager = std::make_unique<XProgram>(words);
    }
    if (std::system(command.c_str()) != 0) {
        throw std::runtime_error(command);
    }
    // Without an address the toolkit would have a bus launched, and so depend on the machine.
    qputenv(busVariable, "unix:path=/nowhere");
    application = std::make_unique<QApplication>(argc_, argv_.data());
    QApplication::setQuitOnLastWindowClosed(false);
    following_ = X11Connection::open();
    displays.follow(*following_);
    if (manager && !managerAnswers()) {
        throw std::runtime_error(managerProgram + " did not start");
    }
}

bool WindowsFixture::managerAnswers() const {
    const xcb_atom_t check = atom("_NET_SUPPORTING_WM_CHECK");
    const bool announced = waitUntil([&] {
        const auto window = cardinal(*other, other->root(), check);
        return window && cardinal(*other, *window, check) == window;
    });
    // It may announce itself before it listens, and then sleep over a request that came in between
    // until the next one; too many of them keep it from doing anything else.
    const xcb_window_t probe = makeWindow("probe");
    xcb_map_window(other->get(), probe);
    QElapsedTimer sinceRequest;
    sinceRequest.start();
    const bool listening = announced && waitUntil([&] {
                               if (sinceRequest.hasExpired(50)) {
                                   sinceRequest.start();
                                   xcb_map_window(other->get(), probe);
                               }
                               return isMapped(probe);
                           });
    xcb_destroy_window(other->get(), probe);
    other->sync();
    return listening;
}

bool WindowsFixture::isMapped(xcb_window_t window) const {
    const XcbOwned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        other->get(), xcb_get_window_attributes(other->get(), window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

PixelRect WindowsFixture::frame(xcb_window_t window) const {
    const XcbOwned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(other->get(), xcb_get_geometry(other->get(), window), nullptr));
    const XcbOwned<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
        other->get(), xcb_translate_coordinates(other->get(), window, other->root(), 0, 0),
        nullptr));
    return size && corner ? PixelRect{corner->dst_x, corner->dst_y, size->width, size->height}
                          : PixelRect{};
}

xcb_window_t WindowsFixture::focus() const {
    const XcbOwned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(other->get(), xcb_get_input_focus(other->get()), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_NONE};
}

bool WindowsFixture::hasState(xcb_window_t window, std::string_view state) const {
    const auto states = cardinals(*other, window, atom("_NET_WM_STATE"));
    return states && std::find(states->begin(), states->end(), atom(state)) != states->end();
}

int WindowsFixture::shapeRectangles(xcb_window_t window) const {
    const XcbOwned<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
        other->get(), xcb_shape_get_rectangles(other->get(), window, XCB_SHAPE_SK_BOUNDING),
        nullptr));
    return reply ? xcb_shape_get_rectangles_rectangles_length(reply.get()) : 0;
}

void WindowsFixture::key(std::uint8_t type, xcb_keysym_t symbol) const {
    xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(other->get());
    const XcbOwned<xcb_keycode_t> code(xcb_key_symbols_get_keycode(symbols, symbol));
    xcb_test_fake_input(other->get(), type, *code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_key_symbols_free(symbols);
}

void WindowsFixture::press(xcb_keysym_t symbol, xcb_keysym_t modifier) const {
    if (modifier != 0) {
        key(XCB_KEY_PRESS, modifier);
    }
    key(XCB_KEY_PRESS, symbol);
    key(XCB_KEY_RELEASE, symbol);
    if (modifier != 0) {
        key(XCB_KEY_RELEASE, modifier);
    }
    other->sync();
}

void WindowsFixture::movePointer(int x, int y) const {
    xcb_test_fake_input(other->get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, other->root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    other->sync();
}

void WindowsFixture::button(std::uint8_t type, std::uint8_t number) const {
    xcb_test_fake_input(other->get(), type, number, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    other->sync();
}

void WindowsFixture::click(int x, int y) const {
    movePointer(x, y);
    button(XCB_BUTTON_PRESS);
    button(XCB_BUTTON_RELEASE);
}

xcb_window_t WindowsFixture::makeWindow(const std::string& title) const {
    const xcb_window_t window = xcb_generate_id(other->get());
    const std::uint32_t mask = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_BUTTON_PRESS;
    xcb_create_window(other->get(), XCB_COPY_FROM_PARENT, window, other->root(), 40, 40, 300, 200,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &mask);
    xcb_change_property(other->get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(title.size()), title.data());
    // The input hint, without which window managers give no keyboard.
    const std::array<std::uint32_t, 9> hints{1, 1};
    xcb_change_property(other->get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_HINTS,
                        XCB_ATOM_WM_HINTS, 32, hints.size(), hints.data());
    return window;
}

xcb_window_t WindowsFixture::openOtherWindow(const std::string& title) const {
    const xcb_window_t window = makeWindow(title);
    xcb_map_window(other->get(), window);
    other->sync();
    waitUntil([&] { return isMapped(window); });
    if (!manager) {
        xcb_set_input_focus(other->get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        other->sync();
        return window;
    }
    const PixelRect place = frame(window);
    click(place.x + 20, place.y + 20);
    return window;
}

} // namespace quillon
