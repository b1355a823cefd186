#pragma once

#include "Platform/Animator.h"
#include "Platform/Popover.h"
#include "Platform/RunLoop.h"
#include "Platform/Simulated/ActionSink.h"
#include "Platform/StatusBar.h"

#include <memory>
#include <optional>
#include <vector>

namespace quillon {

/// A button whose size and place a test gives.
class SimulatedStatusButton final : public Button {
  public:
    [[nodiscard]] Rect bounds() const override { return boundsRect; }
    [[nodiscard]] Size fittingSize() const override { return fitting; }
    [[nodiscard]] ButtonCell* cell() override { return hasCell ? &buttonCell : nullptr; }

    Rect boundsRect{0, 0, 24, 22};
    Size fitting;
    bool hasCell = true;
    ButtonCell buttonCell;
};

class SimulatedStatusItem final : public StatusItem, public ViewHost {
  public:
    SimulatedStatusItem(ActionSink sink, double givenLength);
    ~SimulatedStatusItem() override;
    void setVisible(bool visible) override;
    void setLength(double newLength) override { length = newLength; }
    [[nodiscard]] std::shared_ptr<Button> button() override;
    [[nodiscard]] std::shared_ptr<View> customView() const override { return customView_; }
    void setCustomView(std::shared_ptr<View> view) override;

    void viewChanged() override { ++changes; }
    void toolTipChanged() override {}
    [[nodiscard]] std::optional<Rect> rootOnScreen() const override { return place; }

    std::shared_ptr<SimulatedStatusButton> normalButton = std::make_shared<SimulatedStatusButton>();
    bool hasButton = true;
    double length;
    std::optional<Rect> place{Rect{1000, 878, 24, 22}}; // on the screen
    int changes = 0;                                    // of how it looks

  private:
    ActionSink sink_;
    std::shared_ptr<View> customView_;
};

class SimulatedStatusBar final : public StatusBar {
  public:
    explicit SimulatedStatusBar(ActionSink sink) : sink_(std::move(sink)) {}
    std::shared_ptr<StatusItem> statusItem(double length) override;
    [[nodiscard]] double thickness() const override { return 22; }

    std::weak_ptr<SimulatedStatusItem> item; // the latest
    bool granting = true;
    bool grantingButtons = true;
    Rect buttonBounds{0, 0, 24, 22};

  private:
    ActionSink sink_;
};

/// Reports what it is told; a test says whether there is a sheet.
class SimulatedPopovers final : public Popovers {
  public:
    explicit SimulatedPopovers(ActionSink sink) : sink_(std::move(sink)) {}
    std::unique_ptr<Popover> make(std::string_view screen, std::function<void()> escaped) override;

    bool shown = false;
    bool hasSheet = false;
    const View* anchor = nullptr;
    std::function<void()> escape;

  private:
    class SimulatedPopover;
    ActionSink sink_;
};

/// In virtual time, in steps of a fiftieth of a second.
class SimulatedAnimator final : public Animator {
  public:
    explicit SimulatedAnimator(RunLoop& runLoop) : runLoop_(runLoop) {}
    void animateAlpha(const std::shared_ptr<View>& view, double alpha, double seconds,
                      TimingCurve curve, std::function<void()> completion) override;
    void setAlphaWithoutAnimation(View& view, double alpha) override;

  private:
    struct Animation {
        std::weak_ptr<View> view;
        TimerRef steps;
    };
    void stop(const View& view);

    RunLoop& runLoop_;
    std::vector<Animation> running_;
};

} // namespace quillon
