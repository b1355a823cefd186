#include "PelorinAppApp.h"

#include "Hub/HubToolStore.h"
#include "Hub/ToolMigrationService.h"

#include <array>

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
                                              if (isHubStarted_) {
                                                  HubToolStore::shared().end();
                                              }
                                          })) {
    platform_.application.setDelegate(delegate_);
}

PelorinAppApp::~PelorinAppApp() {
    if (isHubStarted_) {
        // Its thread calls into what ends with the platform.
        ThreeFingerTouchMonitor::shared()->stop();
    }
}

void PelorinAppApp::startToolHub() {
    isHubStarted_ = true;
    HubToolStore& store = HubToolStore::shared();
    VolumeControlManager::shared().setLevelReport(&AppDelegate::showVolumeLevel);
    platform_.events.setPanicHandler(&switchToolsOff);
    ToolMigrationService::shared().migrate();
    store.seedBuiltInTools();
    store.applyModuleStates();
    platform_.runLoop.async([&store] { store.refreshCatalog(); });
}

} // namespace quillon
