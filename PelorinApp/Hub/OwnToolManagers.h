#pragma once

#include "Hub/HubToolModule.h"

#include <memory>
#include <utility>

namespace quillon {

/// Managers on a platform of one's own, made when first asked for: for replays and tests.
class OwnToolManagers final : public ToolManagers {
  public:
    /// `levelReport` is told each level that the volume tool sets.
    explicit OwnToolManagers(Platform& platform, VolumeLevelReport levelReport = {})
        : platform_(platform), levelReport_(std::move(levelReport)) {}

    WindowSwitcherManager& windowSwitcher() override { return made(windowSwitcher_); }
    MediaControlManager& mediaControl() override { return made(mediaControl_); }
    VolumeControlManager& volumeControl() override {
        const bool isNew = !volumeControl_;
        VolumeControlManager& manager = made(volumeControl_);
        if (isNew) {
            manager.setLevelReport(levelReport_);
        }
        return manager;
    }
    Tool4EdgesManager& desktopSwitcher() override { return made(desktopSwitcher_); }
    ScrollReverseManager& scrollReverse() override { return made(scrollReverse_); }

  private:
    template <class Manager>
    Manager& made(std::shared_ptr<Manager>& manager) {
        if (!manager) {
            manager = Manager::create(platform_);
        }
        return *manager;
    }

    Platform& platform_;
    VolumeLevelReport levelReport_;
    std::shared_ptr<WindowSwitcherManager> windowSwitcher_;
    std::shared_ptr<MediaControlManager> mediaControl_;
    std::shared_ptr<VolumeControlManager> volumeControl_;
    std::shared_ptr<Tool4EdgesManager> desktopSwitcher_;
    std::shared_ptr<ScrollReverseManager> scrollReverse_;
};

} // namespace quillon
