#pragma once

#include "Platform/Event.h"
#include "Platform/Sender.h"
#include "Platform/View.h"

#include <memory>
#include <string>
#include <vector>

namespace quillon {

class MenuItem final : public Sender {
  public:
    std::string title;
    Action action;
    std::string keyEquivalent; // empty: none; pressed with the Command modifier (Ctrl elsewhere)
    bool isEnabled = true;
    bool hasCheckMark = false;
    bool isSeparator = false;
};

struct Menu {
    std::vector<std::shared_ptr<MenuItem>> items;
};

/// Menus that pop up. Some systems wait here until the user has chosen, others come back at once;
/// either way the chosen item's action is performed on the main thread.
class Menus {
  public:
    virtual ~Menus() = default;

    /// Where the event that the application is handling happened, over this view.
    virtual void popUpContextMenu(const std::shared_ptr<Menu>& menu, EventType event,
                                  const View& view) = 0;

    /// With its corner at a point of the view, whose origin is its lower left corner, and no item
    /// under the pointer.
    virtual void popUp(const std::shared_ptr<Menu>& menu, Point location, const View& view) = 0;
};

} // namespace quillon
