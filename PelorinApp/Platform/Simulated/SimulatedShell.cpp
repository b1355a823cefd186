#include "Platform/Simulated/SimulatedShell.h"

#include "Platform/View.h"

#include <algorithm>
#include <utility>

namespace quillon {

void SimulatedApplication::setDelegate(std::weak_ptr<ApplicationDelegate> newDelegate) {
    delegate = std::move(newDelegate);
}

void SimulatedApplication::setActivationPolicy(ActivationPolicy policy) {
    sink_("policy", policy == ActivationPolicy::accessory ? "accessory" : "other");
}

void SimulatedApplication::terminate(Sender* sender) {
    sink_("terminate", sender != nullptr ? "sender" : "");
}

std::optional<Image> SimulatedImages::named(std::string_view name) const {
    return hasAssets ? std::optional(Image{std::string(name), "", {}, false, false}) : std::nullopt;
}

std::optional<Image>
SimulatedImages::systemSymbol(std::string_view name,
                              std::string_view accessibilityDescription) const {
    return hasSymbols
               ? std::optional(Image{
                     std::string(name), std::string(accessibilityDescription), {}, true, false})
               : std::nullopt;
}

void SimulatedMenus::popUpContextMenu(const std::shared_ptr<Menu>& menu, EventType /*event*/,
                                      const View& /*view*/) {
    shown = menu;
    sink_("menu", "for the event");
}

void SimulatedMenus::popUp(const std::shared_ptr<Menu>& menu, Point location,
                           const View& /*view*/) {
    shown = menu;
    sink_("menu", "at " + std::to_string(location.x) + " " + std::to_string(location.y));
}

std::optional<std::string> SimulatedLoginItem::change(bool enable) {
    if (!failure) {
        enabled = enable;
    }
    return failure;
}

class SimulatedUpdaters::Controller final : public UpdaterController {
  public:
    explicit Controller(ActionSink& sink) : sink_(sink) {}
    void checkForUpdates(Sender* sender) override {
        sink_("updates", sender != nullptr ? "check sender" : "check");
    }

  private:
    ActionSink& sink_;
};

std::unique_ptr<UpdaterController>
SimulatedUpdaters::makeController(bool startingUpdater,
                                  std::weak_ptr<UpdaterDelegate> updaterDelegate) {
    delegate = std::move(updaterDelegate);
    sink_("updates", startingUpdater ? "start" : "make");
    return std::make_unique<Controller>(sink_);
}

} // namespace quillon
