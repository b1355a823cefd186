#pragma once

#include "Platform/Linux/tray/PanelPlace.h"
#include "Platform/Linux/windows/MenuWidget.h"
#include "Platform/Linux/x11/X11Displays.h"
#include "Platform/Menu.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace quillon {

/// Menus of the toolkit. The calls come back at once. While a menu is open it has pointer and
/// keyboard, whoever has the focus; a second one closes the first. A QApplication must exist.
class WidgetMenus final : public Menus {
  public:
    /// `eventPlace` answers where the input that is being handled happened, in pixels of the root
    /// window; where it does not know, and without it, that is where the pointer is.
    /// `panel`, which may be null, is what menus keep off.
    explicit WidgetMenus(const X11Displays& displays, const PanelPlace* panel = nullptr,
                         std::function<std::optional<PixelPoint>()> eventPlace = {})
        : displays_(displays), panel_(panel), eventPlace_(std::move(eventPlace)) {}

    void popUpContextMenu(const std::shared_ptr<Menu>& menu, EventType event,
                          const View& view) override;

    /// It does not cover the view: where there is no room below, it is above. At the pointer when
    /// the view is in no window.
    void popUp(const std::shared_ptr<Menu>& menu, Point location, const View& view) override;

    /// The latest menu; null when it is closed.
    [[nodiscard]] MenuWidget* open() const { return open_.get(); }

  private:
    void openAt(const Menu& menu, Point corner, const Rect& around);

    /// A menu is closed from within its own event handlers.
    struct DeleteLater {
        void operator()(MenuWidget* menu) const { menu->deleteLater(); }
    };

    const X11Displays& displays_;
    const PanelPlace* panel_;
    std::function<std::optional<PixelPoint>()> eventPlace_;
    std::unique_ptr<MenuWidget, DeleteLater> open_;
};

} // namespace quillon
