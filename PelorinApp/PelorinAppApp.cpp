#include "PelorinAppApp.h"

#include "Tools/Edges/ScrollReverseManager.h"
#include "Tools/Edges/Tool4EdgesManager.h"
#include "Tools/Edges/VolumeControlManager.h"
#include "Tools/Pointer/MediaControlManager.h"
#include "Tools/Pointer/WindowSwitcherManager.h"

#include <utility>
#include <vector>

namespace quillon {

PelorinAppApp::PelorinAppApp() : delegate_(AppDelegate::create(Platform::current(), nullptr)) {
    Platform& platform = Platform::current();
    platform.application.setDelegate(delegate_);

    // The tools run whether or not the shell finds a place on the screen.
    std::vector<EdgeToolManager*> edgeTools{&Tool4EdgesManager::shared(),
                                            &VolumeControlManager::shared(),
                                            &MediaControlManager::shared()};
    VolumeControlManager::shared().setLevelReport(&AppDelegate::showVolumeLevel);
    // While these are off they look for permission every two seconds, for good: they are made when
    // wanted.
    if (WindowSwitcherManager::isStoredAsEnabled(platform)) {
        windowSwitcher_ = &WindowSwitcherManager::shared();
        edgeTools.push_back(windowSwitcher_);
    }
    ScrollReverseManager* scrollReverse = nullptr;
    if (ScrollReverseManager::isStoredAsReversing(platform)) {
        scrollReverse = &ScrollReverseManager::shared();
        scrollReverse->setIsEnabled(true);
    }
    platform.events.setPanicHandler([edgeTools = std::move(edgeTools), scrollReverse] {
        for (EdgeToolManager* tool : edgeTools) {
            tool->switchOffForNow();
        }
        if (scrollReverse != nullptr) {
            scrollReverse->setIsEnabled(false);
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
