#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

/// What xcb allocates and leaves to the caller to free.
struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Owned = std::unique_ptr<T, Free>;

/// A connection to the display in $DISPLAY.
struct Display {
    xcb_connection_t* connection;
    xcb_window_t root;
};

/// Whether a request was accepted by the server.
inline bool accepted(const Display& display, xcb_void_cookie_t request) {
    const Owned<xcb_generic_error_t> error(xcb_request_check(display.connection, request));
    return !error;
}

/// The wheel button of a press event, 0 for every other event.
inline std::uint8_t wheelPress(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_BUTTON_PRESS) {
        return 0;
    }
    const auto button = reinterpret_cast<const xcb_button_press_event_t&>(event).detail;
    return button >= 4 && button <= 7 ? button : 0;
}

/// A bit for each button of the pointer; all are up where nobody can say.
std::vector<std::uint32_t> buttonsDown(const Display& display);

/// Whether no button of any device is down, nor of the pointer. After buttonsDown() has been asked.
bool areAllUp(const Display& display);

int canGrab(const Display& display);
int canGrabLeft(const Display& display);
int holdWheel(const Display& display);
int holdMenu(const Display& display, double seconds);
int holdScreen(const Display& display);
int inject(const Display& display);
int listGrabs(const Display& display);
int listButtonsDown(const Display& display);
int listConnections(const Display& display, std::uint32_t process);
int tellOwner(const Display& display, const char* selection);
int watchPixels(const Display& display, int x, int y, int width, int height);
int killConnection(const Display& display, std::uint32_t resource);
