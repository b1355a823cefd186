#pragma once

#include "Platform/Platform.h"
#include "Tools/Edges/OutputVolume.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace quillon {

/// Is told each level, in percent; called on any thread.
using VolumeLevelReport = std::function<void(float percent)>;

/// One step of the output volume, by the device or, where that does not follow, by the keyboard's
/// volume keys. Everything is copied into it, so that it can run on another thread than the one
/// that made it.
class VolumeStep {
  public:
    /// `strength` is 1…10. What is left to be done later is dropped once `owner` is gone.
    VolumeStep(Platform& platform, std::weak_ptr<const void> owner, VolumeLevelReport report,
               std::int64_t strength);

    /// May wait for the sound system.
    void run(bool up) const;

    [[nodiscard]] bool isStillWanted() const { return !owner_.expired(); }

  private:
    void useKeys(bool up) const;
    void postVolumeKeys(std::int64_t count, bool up) const;
    void refreshVolumeLevelLater(std::int64_t keyPresses) const;

    template <class Action>
    void onMainAfter(double seconds, Action action) const;

    Platform* platform_;
    std::weak_ptr<const void> owner_;
    VolumeLevelReport report_;
    std::int64_t strength_;
};

} // namespace quillon
