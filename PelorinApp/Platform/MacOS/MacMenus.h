#pragma once

#include "Platform/MacOS/ActionTarget.h"
#include "Platform/MacOS/NativeViews.h"
#include "Platform/Menu.h"

#include <memory>
#include <vector>

namespace quillon {

/// The system's menus. Each call returns when the user has chosen, or not.
class MacMenus final : public Menus {
  public:
    /// `views` must outlive this object.
    explicit MacMenus(NativeViews& views) : views_(views) {}
    ~MacMenus() override;

    /// Does nothing over a view that is not shown.
    void popUpContextMenu(const std::shared_ptr<Menu>& menu, EventType event,
                          const View& view) override;
    void popUp(const std::shared_ptr<Menu>& menu, Point location, const View& view) override;

  private:
    /// Shows this one from now on, and lets go of the one before.
    NSMenu* take(const std::shared_ptr<Menu>& menu);
    NSMenuItem* itemFor(const std::shared_ptr<MenuItem>& shared);
    void letGo();

    NativeViews& views_;
    // As long as no other is shown: an item may be chosen after the call that has shown it.
    std::shared_ptr<Menu> shown_;
    std::vector<std::unique_ptr<ActionTarget>> targets_;
};

} // namespace quillon
