#include "Probe.h"

#include <chrono>
#include <iostream>
#include <sstream>
#include <string>

#include <xcb/xtest.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds patience{10};

class Injector {
  public:
    explicit Injector(const Display& display) : display_(display) {}

    /// Carries out one line; false if it is not understood.
    bool obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        const bool quietly = command == "quietly";
        if (quietly) {
            words >> command;
        }
        int x = 0;
        int y = 0;
        int button = 0;
        int count = 0;
        if (command == "move" && words >> x >> y) {
            fake(XCB_MOTION_NOTIFY, 0, x, y);
        } else if (command == "nudge" && words >> x >> y) {
            fake(XCB_MOTION_NOTIFY, 1, x, y);
        } else if (command == "wheel" && words >> button >> count) {
            if (!wheel(button, count, quietly)) {
                return false;
            }
        } else if (command == "press" && words >> button) {
            fake(XCB_BUTTON_PRESS, button, 0, 0);
        } else if (command == "release" && words >> button) {
            fake(XCB_BUTTON_RELEASE, button, 0, 0);
        } else if (command == "await-up") {
            if (!awaitUp()) {
                return false;
            }
        } else if (command != "sync") {
            return false;
        }
        if (!quietly) {
            sync();
        }
        return (words >> std::ws).eof();
    }

    [[nodiscard]] bool isDisplayGone() const {
        return xcb_connection_has_error(display_.connection) != 0;
    }

  private:
    void fake(int type, int detail, int x, int y) {
        xcb_test_fake_input(display_.connection, static_cast<std::uint8_t>(type),
                            static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME, XCB_NONE,
                            static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
        xcb_flush(display_.connection);
    }

    /// Notches, each a press and a release at once, as mice send them, and each when the one before
    /// has been dealt with: while somebody makes up his mind about one, a server loses some of
    /// those that come.
    bool wheel(int button, int count, bool quietly) {
        for (int notch = 0; notch < count; ++notch) {
            if (!quietly && !awaitWheelUp()) {
                return false;
            }
            fake(XCB_BUTTON_PRESS, button, 0, 0);
            fake(XCB_BUTTON_RELEASE, button, 0, 0);
        }
        return quietly || awaitWheelUp();
    }

    /// The release of a wheel button comes through when its press has been dealt with.
    bool awaitWheelUp() {
        constexpr std::uint32_t wheel = 0xF0; // the buttons 4 to 7
        const auto limit = Clock::now() + patience;
        while ((buttonsDown(display_).at(0) & wheel) != 0) {
            if (Clock::now() > limit) {
                return false;
            }
        }
        return true;
    }

    bool awaitUp() {
        const auto limit = Clock::now() + patience;
        while (!areAllUp(display_)) {
            if (Clock::now() > limit) {
                return false;
            }
        }
        return true;
    }

    /// A round trip, after which the server has carried out what was sent. Its reply also makes
    /// the server write out what it holds back for other clients, which no real device does.
    void sync() {
        const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            display_.connection, xcb_get_input_focus(display_.connection), nullptr));
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
        if (injector.isDisplayGone()) {
            std::cerr << "x11_probe: the display is gone\n";
            return 3;
        }
        std::cout << (understood ? "ok" : "error: " + line) << std::endl;
    }
    return 0;
}
