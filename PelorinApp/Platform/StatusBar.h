#pragma once

#include "Platform/Button.h"

#include <memory>

namespace quillon {

/// The length of a status item that is as wide as the status bar is thick.
constexpr double squareStatusItemLength = -2.0;

/// The program's place among the small pictures that the desktop always shows. Main thread only.
///
/// It shows its button, or a custom view in its place.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    virtual void setVisible(bool visible) = 0;

    /// In points, or squareStatusItemLength.
    virtual void setLength(double length) = 0;

    /// Null while there is a custom view, or when the system gives none.
    [[nodiscard]] virtual std::shared_ptr<Button> button() = 0;

    [[nodiscard]] virtual std::shared_ptr<View> customView() const = 0;

    /// Null removes it: the button is shown again, or another one, which has yet to be set up.
    virtual void setCustomView(std::shared_ptr<View> view) = 0;
};

class StatusBar {
  public:
    virtual ~StatusBar() = default;

    /// A new item; null when the system gives none. Letting go of it removes it.
    virtual std::shared_ptr<StatusItem> statusItem(double length) = 0;

    /// The height of what lies in it, in points.
    [[nodiscard]] virtual double thickness() const = 0;
};

} // namespace quillon
