#pragma once

#include "Platform/Drawing.h"
#include "Platform/Sender.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

class View;

/// What shows a tree of views on the screen.
class ViewHost {
  public:
    virtual ~ViewHost() = default;

    /// Something about the view or those within it looks different now.
    virtual void viewChanged() = 0;

    /// One of them has another tooltip.
    virtual void toolTipChanged() { viewChanged(); }

    /// Where the root view's bounds are on the screen; nothing while it is on none.
    [[nodiscard]] virtual std::optional<Rect> rootOnScreen() const = 0;
};

/// A rectangle that draws itself. Main thread only.
///
/// Its frame is in points, in the coordinates of the view that it lies in, whose origin is the top
/// left corner. On the screen it is where its outermost view is shown.
class View : public Sender {
  public:
    View() = default;

    /// What lies in it may live on, as the outermost view of its own tree.
    ~View() override;

    [[nodiscard]] Rect frame() const { return frame_; }
    void setFrame(const Rect& frame);

    /// Its own rectangle in its own coordinates. A view whose size the system gives overrides it.
    [[nodiscard]] virtual Rect bounds() const { return {0, 0, frame_.width, frame_.height}; }

    /// The size that its content asks for; 0 × 0 when it asks for none.
    [[nodiscard]] virtual Size fittingSize() const { return {}; }

    /// 0…1, of it and of all that lies in it.
    [[nodiscard]] double alphaValue() const { return alphaValue_; }
    void setAlphaValue(double alpha);

    [[nodiscard]] const std::string& toolTip() const { return toolTip_; }
    void setToolTip(std::string text);

    void addSubview(std::shared_ptr<View> view);
    [[nodiscard]] const std::vector<std::shared_ptr<View>>& subviews() const { return subviews_; }

    /// To be called by who shows it as the outermost view, with null when it is no longer.
    void setHost(ViewHost* host);

    [[nodiscard]] bool isInWindow() const { return onScreen().has_value(); }

    /// Its bounds in screen coordinates (origin bottom left of the main screen); nothing when it is
    /// in no window.
    [[nodiscard]] std::optional<Rect> onScreen() const;

    /// Asks for it to be drawn again, when the system comes to it.
    void setNeedsDisplay();

    /// Draws what is its own, not what lies in it.
    virtual void draw(DrawingContext& context) const;

  private:
    [[nodiscard]] ViewHost* outermostHost() const;

    Rect frame_;
    double alphaValue_ = 1;
    std::string toolTip_;
    std::vector<std::shared_ptr<View>> subviews_;
    const View* superview_ = nullptr;
    ViewHost* host_ = nullptr;
};

} // namespace quillon
