#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <QWindow>

#include <cstdint>
#include <functional>
#include <memory>

namespace quillon {

/// What the program says to the window manager about its windows beyond what the toolkit says.
///
/// Main thread only. A QGuiApplication must exist. On another platform than X11, everything is done
/// as well as the toolkit can.
class EwmhClient {
  public:
    /// `inputTime` answers the server's time, in milliseconds, of the input that the program is
    /// acting on, 0 when it knows of none.
    explicit EwmhClient(std::function<std::uint32_t()> inputTime);

    /// Whether the window manager has dealt with the last hiding of the window. One that is shown
    /// again before may be taken away in its stead.
    [[nodiscard]] bool isWithdrawn(QWindow& window) const;

    /// Makes the window one that has no place in taskbars and pagers and is on every desktop. To be
    /// called each time before the window is shown, since window managers take the marks off when
    /// it is hidden.
    void markAccessory(QWindow& window) const;

    /// Shows the window on top, with the keyboard. Window managers withhold the keyboard from
    /// programs that have not just been used, so they are told the time of the input. `map` is how
    /// it is shown, where that is not QWindow::show.
    void show(QWindow& window, const std::function<void()>& map = {});

    /// Gives the shown window the keyboard.
    void activate(QWindow& window);

    /// Says the marks once more: a window manager that had not yet dealt with the hiding of the
    /// window when it was shown again has taken them off. To be called after it was shown.
    void confirmAccessory(QWindow& window) const;

    /// Whether something blends windows, so that one may be translucent.
    [[nodiscard]] bool isComposited() const;

  private:
    [[nodiscard]] std::uint32_t userTime();
    [[nodiscard]] std::uint32_t serverTime();
    [[nodiscard]] bool hasWindowManager() const;
    void setUserTime(QWindow& window, std::uint32_t time) const;
    void activate(QWindow& window, std::uint32_t time) const;
    void tellManager(QWindow& window, xcb_atom_t message, std::uint32_t a, std::uint32_t b = 0,
                     std::uint32_t c = 0, std::uint32_t d = 0) const;

    struct Atoms {
        xcb_atom_t activeWindow, compositor, desktop, state, stateAbove, stateSkipPager,
            stateSkipTaskbar, stateSticky, supportingCheck, userTime, userTimeWindow, wmState;
    };

    std::function<std::uint32_t()> inputTime_;
    xcb_connection_t* connection_ = nullptr; // the toolkit's, for the order of requests
    xcb_window_t root_ = XCB_NONE;
    Atoms atoms_{};
    std::unique_ptr<X11Connection> clock_;
};

} // namespace quillon
