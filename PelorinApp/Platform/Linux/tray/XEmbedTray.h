#pragma once

#include "Platform/Linux/tray/DockWindow.h"
#include "Platform/Linux/tray/HoverToolTip.h"
#include "Platform/Linux/tray/PanelSample.h"
#include "Platform/Linux/tray/TrayManager.h"
#include "Platform/Linux/tray/TrayPlace.h"
#include "Platform/Linux/tray/TrayScreen.h"
#include "Platform/RunLoop.h"

#include <functional>
#include <memory>
#include <optional>

namespace quillon {

/// The status item as a window of ours that lies in the desktop's tray, while there is one.
class XEmbedTray final : public TrayPlace {
  public:
    /// Asks to be docked before it returns if there is a tray. `trayChanged` is called when one
    /// comes or goes later. All that is given must outlive this object.
    XEmbedTray(RunLoop& runLoop, TrayScreen& screen, TrayContent& content, double length,
               std::function<void()> trayChanged);
    ~XEmbedTray() override;

    [[nodiscard]] bool hasTray() const { return manager_.has_value(); }

    void setVisible(bool visible);

    /// In points, or squareStatusItemLength.
    void setLength(double length);

    // To be called with what the screen says.
    void handleEvent(const xcb_generic_event_t& event);
    void connectionChanged();
    void geometryChanged();

    void contentChanged() override;
    [[nodiscard]] std::optional<Rect> onScreen() const override;
    [[nodiscard]] std::optional<Size> size() const override;
    [[nodiscard]] std::optional<Rect> panelOnScreen() const override;
    [[nodiscard]] bool isVertical() const override;

  private:
    void findTray();
    void dock();
    void undock();
    void dockLater();
    void draw();
    void lookAtPanelNowAndSoon();
    void lookAtPanel();
    void click(const xcb_button_release_event_t& event);
    void handleWindowEvent(const xcb_generic_event_t& event);
    [[nodiscard]] QSize wantedSize(double pixelsPerPoint) const;
    [[nodiscard]] std::optional<PixelRect> dockedPlace() const;
    [[nodiscard]] std::optional<PixelRect> panelPlace() const;
    [[nodiscard]] QColor label() const;

    RunLoop& runLoop_;
    TrayScreen& screen_;
    TrayContent& content_;
    double length_;
    std::function<void()> trayChanged_;
    bool isVisible_ = true;
    std::optional<TrayManager> manager_;
    std::unique_ptr<DockWindow> window_;
    PanelSample panel_;            // until it has been seen: black, as most panels are dark
    std::optional<double> seenAt_; // uptime
    HoverToolTip toolTip_;
    TimerRef sampling_;
    TimerRef docking_;
};

} // namespace quillon
