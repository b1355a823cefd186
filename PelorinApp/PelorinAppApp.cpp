#include "PelorinAppApp.h"

#include "Hub/HubToolStore.h"
#include "Hub/ToolMigrationService.h"

#include <array>
#include <utility>

namespace quillon {

namespace {

/// Whoever demands all input back gets it, until the next start.
void switchToolsOff() {
    ToolManagers& managers = sharedToolManagers();
    for (EdgeToolManager* tool :
         std::array<EdgeToolManager*, 4>{&managers.windowSwitcher(), &managers.mediaControl(),
                                         &managers.volumeControl(), &managers.desktopSwitcher()}) {
        tool->switchOffForNow();
    }
    managers.scrollReverse().setIsEnabled(false);
}

} // namespace

PelorinAppApp::PelorinAppApp()
    : platform_(Platform::current()), delegate_(AppDelegate::create(
                                          platform_, [this] { startToolHub(); },
                                          [this] {
                                              if (commands_) {
                                                  HubToolStore::shared().end();
                                              }
                                          })) {
    platform_.application.setDelegate(delegate_);
}

PelorinAppApp::~PelorinAppApp() {
    if (commands_) {
        // Its thread calls into what ends with the platform.
        ThreeFingerTouchMonitor::shared()->stop();
    }
}

std::optional<std::string> PelorinAppApp::toolStatus() const {
    return commands_ ? std::optional(commands_->status()) : std::nullopt;
}

void PelorinAppApp::perform(const HubCommand& command,
                            std::function<void(HubCommands::Outcome)> done) {
    if (!commands_) {
        done("Quillon has not started its tools");
        return;
    }
    commands_->perform(command, [done = std::move(done)](const HubCommands::Outcome& outcome) {
        if (outcome) {
            done(outcome);
            return;
        }
        HubToolStore::shared().whenStored([done](bool areStored) {
            done(areStored ? std::nullopt : std::optional("the change could not be stored"));
        });
    });
}

void PelorinAppApp::startToolHub() {
    HubToolStore& store = HubToolStore::shared();
    commands_ = std::make_unique<HubCommands>(store);
    VolumeControlManager::shared().setLevelReport(&AppDelegate::showVolumeLevel);
    platform_.events.setPanicHandler(&switchToolsOff);
    ToolMigrationService::shared().migrate();
    store.seedBuiltInTools();
    store.applyModuleStates();
    platform_.runLoop.async([&store] { store.refreshCatalog(); });
}

} // namespace quillon
