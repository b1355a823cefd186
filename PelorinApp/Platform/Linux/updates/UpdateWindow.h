#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillon {

struct UpdateButton {
    std::string title;
    std::function<void()> perform; // may be empty
};

/// The one window in which the user reads what came of a check. Main thread only.
class UpdateWindow {
  public:
    virtual ~UpdateWindow() = default;

    /// Shows this, in place of what it may be showing, in front, and returns at once. Title and
    /// text are plain text and must not be interpreted as anything else: parts of them come from
    /// the network. The first button is the default. A button closes the window, then performs;
    /// closing it otherwise performs nothing.
    virtual void show(const std::string& title, const std::string& text,
                      std::vector<UpdateButton> buttons) = 0;
};

} // namespace quillon
