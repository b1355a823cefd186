#include "PelorinAppApp.h"

#include "Tools/Edges/Tool4EdgesManager.h"
#include "Tools/Pointer/WindowSwitcherManager.h"

namespace quillon {

PelorinAppApp::PelorinAppApp() : delegate_(AppDelegate::create(Platform::current(), nullptr)) {
    Platform::current().application.setDelegate(delegate_);

    // The tools run whether or not the shell finds a place on the screen.
    Tool4EdgesManager& desktopSwitcher = Tool4EdgesManager::shared();
    WindowSwitcherManager& windowSwitcher = WindowSwitcherManager::shared();
    Platform::current().events.setPanicHandler([&desktopSwitcher, &windowSwitcher] {
        desktopSwitcher.switchOffForNow();
        windowSwitcher.switchOffForNow();
    });
}

PelorinAppApp::~PelorinAppApp() {
    // Its thread calls into what ends with the platform.
    ThreeFingerTouchMonitor::shared()->stop();
}

} // namespace quillon
