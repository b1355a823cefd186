#pragma once

#include "Platform/Linux/tray/NotifierItem.h"
#include "Platform/Linux/tray/NotifierWatcher.h"
#include "Platform/Linux/tray/TrayContext.h"
#include "Platform/Linux/tray/TrayPlace.h"
#include "Platform/Linux/tray/TrayScreen.h"
#include "Platform/Linux/tray/XEmbedTray.h"
#include "Platform/RunLoop.h"

#include <optional>

namespace quillon {

/// Where this desktop can show a status item: in a tray of windows if there is one, else with a
/// host of status notifier items. It follows whichever comes and goes, and says when there is
/// neither for a while. Main thread only.
class TrayPlaces final : public TrayPlace, private TrayScreenListener {
  public:
    /// Context and content must outlive this object.
    TrayPlaces(const TrayContext& context, TrayContent& content, double length);
    ~TrayPlaces() override;

    void setVisible(bool visible);
    void setLength(double length) { tray_.setLength(length); }

    void contentChanged() override;
    [[nodiscard]] std::optional<Rect> onScreen() const override { return place().onScreen(); }
    [[nodiscard]] std::optional<Size> size() const override { return place().size(); }
    [[nodiscard]] std::optional<Rect> panelOnScreen() const override {
        return place().panelOnScreen();
    }
    [[nodiscard]] bool isVertical() const override { return place().isVertical(); }

  private:
    void handleEvent(const xcb_generic_event_t& event) override;
    void connectionChanged() override { tray_.connectionChanged(); }
    void geometryChanged() override { tray_.geometryChanged(); }

    [[nodiscard]] const TrayPlace& place() const;
    void choose();
    void tellSoon();

    const TrayContext& context_;
    bool isVisible_ = true;
    bool saidNone_ = false;
    TimerRef telling_;
    TrayScreen screen_;
    XEmbedTray tray_;
    NotifierWatcher watcher_;
    NotifierItem notifier_;
};

} // namespace quillon
