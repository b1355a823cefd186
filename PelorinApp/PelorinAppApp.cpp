#include "PelorinAppApp.h"

#include "Tools/Edges/Tool4EdgesManager.h"
#include "Tools/Pointer/WindowSwitcherManager.h"

namespace quillon {

PelorinAppApp::PelorinAppApp() : delegate_(AppDelegate::create(Platform::current(), nullptr)) {
    Platform& platform = Platform::current();
    platform.application.setDelegate(delegate_);

    // The tools run whether or not the shell finds a place on the screen.
    Tool4EdgesManager& desktopSwitcher = Tool4EdgesManager::shared();
    // While it is off it looks for permission every two seconds, for good: it is made when wanted.
    if (WindowSwitcherManager::isStoredAsEnabled(platform)) {
        windowSwitcher_ = &WindowSwitcherManager::shared();
    }
    platform.events.setPanicHandler([&desktopSwitcher, windowSwitcher = windowSwitcher_] {
        desktopSwitcher.switchOffForNow();
        if (windowSwitcher != nullptr) {
            windowSwitcher->switchOffForNow();
        }
    });
}

PelorinAppApp::~PelorinAppApp() {
    if (windowSwitcher_ != nullptr) {
        // Its thread calls into what ends with the platform.
        ThreeFingerTouchMonitor::shared()->stop();
    }
}

} // namespace quillon
