#pragma once

#include "Hub/HubToolStore.h"
#include "Hub/OwnToolManagers.h"
#include "Platform/Simulated/SimulatedDesktop.h"
#include "Views/HubModel.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillon {

/// What the screens show, on a simulated desktop: the hub's store with the tools as they are at a
/// first start, their managers, and the model made of both.
class SimulatedHub {
  public:
    explicit SimulatedHub(bool trusted = true) {
        desktop.accessibility.trusted = trusted;
        start();
    }

    /// As the program does it, with the catalog there.
    void start() {
        hub.reset();
        store =
            HubToolStore::create(HubServices::of(desktop.platform), [this](const IsToolOn& isOn) {
                return hubToolModules(managers, isOn);
            });
        store->seedBuiltInTools();
        store->applyModuleStates();
        store->refreshCatalog();
        pass(0);
        hub = std::make_unique<HubModel>(*store, managers, desktop.platform.workspace,
                                         desktop.platform.bundle);
    }

    /// So many seconds, and all that is to be done in them.
    void pass(double seconds) {
        desktop.runLoop.drain();
        desktop.runLoop.advance(seconds);
    }

    /// Until the managers have asked once more whether they are trusted.
    void trust(bool granted) {
        desktop.accessibility.trusted = granted;
        pass(2.5);
    }

    /// What was done to the desktop since the last time, of this kind.
    std::vector<std::string> took(std::string_view kind) {
        std::vector<std::string> found;
        std::erase_if(actions, [&](const auto& action) {
            const bool isKind = action.first == kind;
            if (isKind) {
                found.push_back(action.second);
            }
            return isKind;
        });
        return found;
    }

    std::vector<std::pair<std::string, std::string>> actions;
    SimulatedDesktop desktop{[this](std::string_view kind, const std::string& text) {
        actions.emplace_back(kind, text);
    }};
    OwnToolManagers managers{desktop.platform};
    std::shared_ptr<HubToolStore> store;
    std::unique_ptr<HubModel> hub;
};

} // namespace quillon
