#pragma once

#include "Platform/Linux/looks/XSettings.h"
#include "Platform/Linux/x11/X11Connection.h"
#include "Platform/Workspace.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <optional>

namespace quillon {

/// How the user wants all programs to look.
struct DesktopLook {
    DisplayOptions options;
    std::optional<bool> isDark; // nothing: nobody has said

    bool operator==(const DesktopLook&) const = default;
};

/// What the settings say of it: desktops name a theme, and whether things are to move.
[[nodiscard]] DesktopLook lookOf(const XSettings& settings);

/// Follows the desktop's settings manager, also one that comes late or goes. It sleeps until
/// something changes. Main thread only; an event loop must be there.
class DesktopLooks {
  public:
    explicit DesktopLooks(std::function<void()> changed);

    [[nodiscard]] const DesktopLook& look() const { return look_; }

  private:
    void readEvents();
    [[nodiscard]] bool concernsSettings(const xcb_generic_event_t& event) const;
    void takeSettings();

    std::function<void()> changed_;
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<QSocketNotifier> notifier_;
    xcb_atom_t selection_ = XCB_NONE; // whose owner is the settings manager
    xcb_atom_t settings_ = XCB_NONE;
    xcb_atom_t manager_ = XCB_NONE;
    xcb_window_t owner_ = XCB_NONE;
    DesktopLook look_;
};

} // namespace quillon
