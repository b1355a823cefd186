#include "Platform/Simulated/SimulatedStatusBar.h"

#include <algorithm>
#include <utility>

namespace quillon {

SimulatedStatusItem::SimulatedStatusItem(ActionSink sink, double givenLength)
    : length(givenLength), sink_(std::move(sink)) {
    normalButton->setHost(this);
}

SimulatedStatusItem::~SimulatedStatusItem() {
    normalButton->setHost(nullptr);
    if (customView_) {
        customView_->setHost(nullptr);
    }
}

void SimulatedStatusItem::setVisible(bool visible) { sink_("status", visible ? "show" : "hide"); }

std::shared_ptr<Button> SimulatedStatusItem::button() {
    return hasButton && !customView_ ? normalButton : nullptr;
}

void SimulatedStatusItem::setCustomView(std::shared_ptr<View> view) {
    if (customView_) {
        customView_->setHost(nullptr);
    }
    customView_ = std::move(view);
    normalButton->setHost(customView_ ? nullptr : this);
    if (customView_) {
        customView_->setHost(this);
    }
    sink_("status", customView_ ? "custom view" : "button");
}

std::shared_ptr<StatusItem> SimulatedStatusBar::statusItem(double length) {
    if (!granting) {
        return nullptr;
    }
    auto made = std::make_shared<SimulatedStatusItem>(sink_, length);
    made->hasButton = grantingButtons;
    made->normalButton->boundsRect = buttonBounds;
    item = made;
    return made;
}

class SimulatedPopovers::SimulatedPopover final : public Popover {
  public:
    explicit SimulatedPopover(SimulatedPopovers& service) : service_(service) {}

    void setBehavior(PopoverBehavior behavior) override {
        say(behavior == PopoverBehavior::applicationDefined ? "application-defined" : "other");
    }
    [[nodiscard]] bool isShown() const override { return service_.shown; }
    void show(const View& view, RectEdge preferredEdge) override {
        service_.shown = true;
        service_.anchor = &view;
        say(preferredEdge == RectEdge::minY ? "show below" : "show elsewhere");
    }
    void close() override {
        service_.shown = false;
        say("close");
    }
    void makeKeyWindow() override { say("key"); }
    [[nodiscard]] bool hasAttachedSheet() const override { return service_.hasSheet; }

  private:
    void say(const char* what) { service_.sink_("popover", what); }

    SimulatedPopovers& service_;
};

std::unique_ptr<Popover> SimulatedPopovers::make(std::string_view screen,
                                                 std::function<void()> escaped) {
    escape = std::move(escaped);
    sink_("popover", "make " + std::string(screen));
    return std::make_unique<SimulatedPopover>(*this);
}

void SimulatedAnimator::animateAlpha(const std::shared_ptr<View>& view, double alpha,
                                     double seconds, TimingCurve /*curve*/,
                                     std::function<void()> completion) {
    constexpr double step = 0.02;
    stop(*view);
    const double start = runLoop_.uptime();
    const double from = view->alphaValue();
    const std::weak_ptr<View> animated = view;
    const auto steps = runLoop_.scheduleRepeating(step, [=, this] {
        if (const auto shown = animated.lock()) {
            const double part = std::min((runLoop_.uptime() - start) / seconds, 1.0);
            shown->setAlphaValue(from + (alpha - from) * part * part * (3 - 2 * part));
        }
    });
    running_.push_back({view, steps});
    runLoop_.asyncAfter(seconds, [this, steps, completion = std::move(completion)] {
        steps->cancel();
        std::erase_if(running_, [&](const Animation& one) { return one.steps == steps; });
        if (completion) {
            completion();
        }
    });
}

void SimulatedAnimator::setAlphaWithoutAnimation(View& view, double alpha) {
    stop(view);
    view.setAlphaValue(alpha);
}

void SimulatedAnimator::stop(const View& view) {
    for (const Animation& animation : running_) {
        if (animation.view.lock().get() == &view) {
            animation.steps->cancel();
        }
    }
}

} // namespace quillon
