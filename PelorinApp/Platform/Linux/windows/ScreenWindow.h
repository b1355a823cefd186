#pragma once

#include "Platform/Linux/windows/EwmhClient.h"
#include "Platform/Quick/QuickScreen.h"

#include <QObject>
#include <QQuickView>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillon {

/// A screen in a window of its own, which the window manager frames and places. It is made when it
/// is shown, and gone when it has been closed. The screen is a Quick item with a size of its own
/// (`implicitWidth`, `implicitHeight`), which the window follows, and a `property string title` for
/// the window; closing by Escape is its own affair. Main thread only.
class ScreenWindow {
  public:
    ScreenWindow(std::string_view screen, QuickScreens screens,
                 std::function<std::uint32_t()> inputTime);
    ScreenWindow(const ScreenWindow&) = delete;
    ScreenWindow& operator=(const ScreenWindow&) = delete;
    ~ScreenWindow() = default;

    /// Shows it, or brings it before other windows.
    void show();

    /// Null while it is not shown.
    [[nodiscard]] QQuickView* view() const { return view_.get(); }

  private:
    void make();
    void takeSize();
    void letGo();

    std::string screen_;
    QuickScreens screens_;
    EwmhClient manager_;
    std::unique_ptr<QQuickView> view_;
    QObject followers_; // of the view; none is called when this is gone
};

} // namespace quillon
