#pragma once

#include "OtherPrograms.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quillon {

/// Other programs with windows, and a window manager of three desktops that does what it is asked.
class ObedientManager {
  public:
    ObedientManager() {
        const X11Connection& connection = programs_.connection();
        const xcb_window_t sign = xcb_generate_id(connection.get());
        xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, sign, connection.root(), -1, -1,
                          1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        programs_.setText(sign, connection.atom("_NET_WM_NAME"), "Obedient");
        for (const xcb_window_t window : {sign, connection.root()}) {
            programs_.set(window, connection.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW,
                          {sign});
        }
        programs_.set(connection.root(), connection.atom("_NET_NUMBER_OF_DESKTOPS"),
                      XCB_ATOM_CARDINAL, {3});
    }

    /// A window in front of all others, which gets what is typed.
    void open(std::uint32_t process, const std::string& className) {
        const xcb_window_t window = programs_.open(process, className);
        owners_[window] = process;
        raise(window);
    }

    /// The program ends with all its windows.
    void end(std::uint32_t process) {
        for (const auto& [window, owner] : owners_) {
            if (owner == process) {
                programs_.close(window);
                std::erase(backToFront_, window);
            }
        }
        std::erase_if(owners_, [&](const auto& one) { return one.second == process; });
        publish();
    }

    [[nodiscard]] int desktop() const { return desktop_; }

    /// From now on it does nothing about what it is asked.
    void disobey() { isObedient_ = false; }

    void obey() {
        for (const OtherPrograms::Request& request : programs_.requests()) {
            if (isObedient_) {
                obey(request);
            }
        }
    }

  private:
    void obey(const OtherPrograms::Request& request) {
        const WindowAtoms& atoms = programs_.atoms();
        if (request.type == atoms.currentDesktop) {
            desktop_ = static_cast<int>(request.values[0]);
            programs_.setDesktop(request.values[0]);
        } else if (request.type == atoms.activeWindow) {
            raise(request.window);
        } else if (request.type == atoms.restack) {
            restack(request.window, request.values[1], request.values[2]);
        }
    }

    void restack(xcb_window_t window, xcb_window_t sibling, std::uint32_t detail) {
        std::erase(backToFront_, window);
        auto place = std::find(backToFront_.begin(), backToFront_.end(), sibling);
        if (place == backToFront_.end()) {
            place = detail == XCB_STACK_MODE_BELOW ? backToFront_.begin() : backToFront_.end();
        } else if (detail != XCB_STACK_MODE_BELOW) {
            ++place;
        }
        backToFront_.insert(place, window);
        publish();
    }

    void raise(xcb_window_t window) {
        std::erase(backToFront_, window);
        backToFront_.push_back(window);
        publish();
    }

    void publish() const {
        programs_.set(programs_.connection().root(), programs_.atoms().clientListStacking,
                      XCB_ATOM_WINDOW, backToFront_);
        programs_.setActive(backToFront_.empty() ? xcb_window_t{XCB_NONE} : backToFront_.back());
    }

    OtherPrograms programs_;
    std::map<xcb_window_t, std::uint32_t> owners_;
    std::vector<xcb_window_t> backToFront_;
    int desktop_ = 0;
    bool isObedient_ = true;
};

} // namespace quillon
