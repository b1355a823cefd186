#include "Probe.h"

#include <chrono>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

#include <xcb/xtest.h>

namespace {

using Clock = std::chrono::steady_clock;

class Injector {
  public:
    explicit Injector(const Display& display) : display_(display) {}

    /// Carries out one line; false if it is not understood.
    bool obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        int x = 0;
        int y = 0;
        int button = 0;
        int count = 0;
        double gap = 0;
        if (command == "move" && words >> x >> y) {
            fake(XCB_MOTION_NOTIFY, 0, x, y);
        } else if (command == "nudge" && words >> x >> y) {
            fake(XCB_MOTION_NOTIFY, 1, x, y);
        } else if (command == "wheel" && words >> button >> count >> gap && gap >= 1) {
            wheel(button, count, std::chrono::duration<double, std::milli>(gap));
        } else if (command == "press" && words >> button) {
            fake(XCB_BUTTON_PRESS, button, 0, 0);
        } else if (command == "release" && words >> button) {
            fake(XCB_BUTTON_RELEASE, button, 0, 0);
        } else if (command != "sync") {
            return false;
        }
        return (words >> std::ws).eof();
    }

    /// Waits until the server has carried out what was sent; false when the display is gone.
    bool sync() {
        const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            display_.connection, xcb_get_input_focus(display_.connection), nullptr));
        return reply != nullptr;
    }

  private:
    void fake(int type, int detail, int x, int y) {
        xcb_test_fake_input(display_.connection, static_cast<std::uint8_t>(type),
                            static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME, XCB_NONE,
                            static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
        xcb_flush(display_.connection);
    }

    /// Notches at a steady pace. A server loses some of those that come less than a millisecond
    /// apart while a grab is frozen, so the gap is never smaller.
    void wheel(int button, int count, std::chrono::duration<double, std::milli> gap) {
        const auto start = Clock::now();
        for (int notch = 0; notch < count; ++notch) {
            std::this_thread::sleep_until(start +
                                          std::chrono::duration_cast<Clock::duration>(notch * gap));
            fake(XCB_BUTTON_PRESS, button, 0, 0);
            fake(XCB_BUTTON_RELEASE, button, 0, 0);
        }
    }

    Display display_;
};

bool hasXTest(const Display& display) {
    const auto* extension = xcb_get_extension_data(display.connection, &xcb_test_id);
    return extension != nullptr && extension->present != 0;
}

} // namespace

int inject(const Display& display) {
    if (!hasXTest(display)) {
        std::cerr << "x11_probe: this display has no XTEST\n";
        return 1;
    }
    Injector injector(display);
    for (std::string line; std::getline(std::cin, line);) {
        const bool understood = injector.obey(line);
        if (!injector.sync()) {
            std::cerr << "x11_probe: the display is gone\n";
            return 3;
        }
        std::cout << (understood ? "ok" : "error: " + line) << std::endl;
    }
    return 0;
}
