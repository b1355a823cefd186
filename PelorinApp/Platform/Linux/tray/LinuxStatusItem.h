#pragma once

#include "Platform/Linux/tray/PanelPlace.h"
#include "Platform/Linux/tray/StatusButton.h"
#include "Platform/Linux/tray/TrayContext.h"
#include "Platform/Linux/tray/TrayPlaces.h"
#include "Platform/StatusBar.h"

#include <memory>
#include <optional>

namespace quillon {

/// The status item of a Linux desktop. Main thread only.
class LinuxStatusItem final : public StatusItem,
                              public PanelPlace,
                              private ViewHost,
                              private TrayContent {
  public:
    /// The context must outlive this object.
    LinuxStatusItem(const TrayContext& context, double length);
    LinuxStatusItem(const LinuxStatusItem&) = delete;
    LinuxStatusItem& operator=(const LinuxStatusItem&) = delete;
    ~LinuxStatusItem() override;

    void setVisible(bool visible) override { places_.setVisible(visible); }
    /// Of a custom view. The button is always as wide as the bar is thick: whoever gives it a
    /// length has measured that in the panel of the moment, and the next one may be thinner.
    void setLength(double length) override;
    [[nodiscard]] std::shared_ptr<Button> button() override;
    [[nodiscard]] std::shared_ptr<View> customView() const override { return customView_; }
    void setCustomView(std::shared_ptr<View> view) override;

    /// What it has on the desktop, in points; what it asks for while it has nothing there.
    [[nodiscard]] Size size() const;

    [[nodiscard]] std::optional<Rect> panelOnScreen() const override {
        return places_.panelOnScreen();
    }
    [[nodiscard]] bool isVertical() const override { return places_.isVertical(); }

  private:
    void viewChanged() override;
    [[nodiscard]] std::optional<Rect> rootOnScreen() const override;

    [[nodiscard]] QImage picture(QSize pixels, std::optional<double> scale,
                                 const QColor& label) const override;
    [[nodiscard]] std::string toolTip() const override;
    void clicked(const UserAction& action, std::optional<Point> place) override;

    [[nodiscard]] std::shared_ptr<View> shown() const;
    [[nodiscard]] Size usualSize() const;
    [[nodiscard]] double shownLength() const;
    [[nodiscard]] Point indentWithin(Size item) const;

    const TrayContext& context_;
    double length_;
    bool loopRuns_ = false;
    bool redrawing_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    std::shared_ptr<StatusButton> button_;
    std::shared_ptr<View> customView_;
    TrayPlaces places_;
};

} // namespace quillon
