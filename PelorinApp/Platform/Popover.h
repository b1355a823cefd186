#pragma once

#include "Platform/View.h"

#include <functional>
#include <memory>
#include <string_view>

namespace quillon {

enum class PopoverBehavior { applicationDefined, transient, semitransient };

/// An edge of the anchor; minY is the lower one.
enum class RectEdge { minX, minY, maxX, maxY };

/// A panel that hangs on a view. Made once and kept: its content lives on while it is closed. Main
/// thread only.
class Popover {
  public:
    virtual ~Popover() = default;

    /// What closes it besides close().
    virtual void setBehavior(PopoverBehavior behavior) = 0;

    [[nodiscard]] virtual bool isShown() const = 0;

    /// Beside the anchor's bounds, on this edge of it if there is room, wholly on its screen. An
    /// anchor that is in no window is as good as one at the main screen's top right.
    virtual void show(const View& anchor, RectEdge preferredEdge) = 0;

    virtual void close() = 0;

    /// Keys go to its window from now on.
    virtual void makeKeyWindow() = 0;

    /// Whether its window has a sheet: a question that is to be answered first.
    [[nodiscard]] virtual bool hasAttachedSheet() const = 0;
};

class Popovers {
  public:
    virtual ~Popovers() = default;

    /// With the screen of this name as its content. `escaped` is called when the user presses
    /// Escape and the content has nothing of its own to go back from.
    virtual std::unique_ptr<Popover> make(std::string_view screen,
                                          std::function<void()> escaped) = 0;
};

} // namespace quillon
