#pragma once

#include "Platform/Linux/tray/PanelPlace.h"
#include "Platform/Linux/windows/EwmhClient.h"
#include "Platform/Linux/windows/PopoverWindow.h"
#include "Platform/Linux/x11/X11Displays.h"
#include "Platform/Popover.h"
#include "Platform/Quick/QuickScreen.h"

#include <QElapsedTimer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// What popovers need of the rest; it outlives them.
struct PopoverSurroundings {
    const X11Displays& displays;
    PanelPlace* panel = nullptr; // null: none is known

    /// The server's time, in milliseconds, of the input that the program is acting on; 0: unknown.
    std::function<std::uint32_t()> inputTime;

    QuickScreens screens;
};

/// A popover on the desktop: a window that floats above the others, on every desktop, unknown to
/// taskbars and pagers. It has the keyboard once it is shown, and stays until it is closed whoever
/// has the keyboard then. The window manager's request
/// to close it counts as Escape on its first page, but not while there is a sheet.
///
/// Its window is made, and its content drawn once, when the program is first idle after the
/// popover was made; show() does at once whatever has not been done by then.
class QuickPopover final : public Popover {
  public:
    QuickPopover(const PopoverSurroundings& surroundings, std::string_view screen,
                 std::function<void()> escaped);

    /// Any behaviour is taken as applicationDefined, the only one that is used.
    void setBehavior(PopoverBehavior behavior) override;

    [[nodiscard]] bool isShown() const override { return shown_; }
    void show(const View& anchor, RectEdge preferredEdge) override;
    void close() override;
    void makeKeyWindow() override;
    [[nodiscard]] bool hasAttachedSheet() const override;

    /// Null until it is first needed.
    [[nodiscard]] PopoverWindow* window() const { return window_.get(); }

  private:
    /// One of the steps toward a window that can be shown at once; false: there is none left.
    bool prepareStep();
    PopoverWindow& preparedWindow();
    void place();
    void followScreens();
    void present();

    PopoverSurroundings surroundings_;
    std::string screen_;
    std::function<void()> escaped_;
    EwmhClient manager_;
    std::unique_ptr<PopoverWindow> window_;
    QTimer idle_;
    QTimer settling_;
    QTimer retry_;
    QElapsedTimer waiting_;
    std::optional<Rect> anchor_; // nothing: in no window
    RectEdge preferredEdge_ = RectEdge::minY;
    bool warm_ = false;
    bool isFitting_ = false;
    bool shown_ = false;
};

class QuickPopovers final : public Popovers {
  public:
    /// A QGuiApplication must exist; its windows are drawn by the processor from now on.
    explicit QuickPopovers(PopoverSurroundings surroundings);

    std::unique_ptr<Popover> make(std::string_view screen, std::function<void()> escaped) override;

  private:
    PopoverSurroundings surroundings_;
};

} // namespace quillon
