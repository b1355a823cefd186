#include "Tools/Edges/VolumeStep.h"

#include "Tools/SystemKey.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillon {

namespace {

constexpr float strengthsInFullVolume = 400; // a step of strength 1 is a quarter percent
constexpr std::int64_t mostKeyPresses = 5;
constexpr double keyInterval = 0.008;  // seconds
constexpr double settlingTime = 0.070; // seconds, for the last key to take effect

float percent(float volume) { return volume >= 1 ? 100 : std::max(volume, 0.0F) * 100; }

bool isAtLimit(float volume, bool up) {
    constexpr float nearlyFull = 0.999F;
    constexpr float nearlyNone = 0.001F;
    return up ? volume >= nearlyFull : volume <= nearlyNone;
}

/// A device with coarse steps may move by less than was asked for, or not at all.
bool hasMoved(float from, float to, float delta) {
    constexpr float leastPart = 0.2F;
    constexpr float leastChange = 0.0001F;
    return std::fabs(to - from) >= std::max(delta * leastPart, leastChange);
}

} // namespace

VolumeStep::VolumeStep(Platform& platform, std::weak_ptr<const void> owner,
                       VolumeLevelReport report, std::int64_t strength)
    : platform_(&platform), owner_(std::move(owner)), report_(std::move(report)),
      strength_(strength) {}

void VolumeStep::run(bool up) const {
    constexpr float noChange = 0.00001F;
    const OutputVolume output(platform_->audio);
    if (up && output.isOutputMuted()) {
        output.unmuteOutput();
    }
    const float delta = static_cast<float>(strength_) / strengthsInFullVolume;
    const float current = output.getOutputVolume();
    const float target = std::clamp(up ? current + delta : current - delta, 0.0F, 1.0F);
    if (isAtLimit(current, up)) {
        report_(percent(current));
        return;
    }
    if (std::fabs(target - current) >= noChange && output.setOutputVolume(target)) {
        const float reached = output.getOutputVolume();
        if (hasMoved(current, reached, delta)) {
            report_(percent(reached));
            return;
        }
    }
    useKeys(up);
}

void VolumeStep::useKeys(bool up) const {
    const auto presses = std::clamp<std::int64_t>(strength_, 1, mostKeyPresses);
    postVolumeKeys(presses, up);
    refreshVolumeLevelLater(presses);
}

void VolumeStep::postVolumeKeys(std::int64_t count, bool up) const {
    const SystemKey key = up ? SystemKey::soundUp : SystemKey::soundDown;
    for (std::int64_t i = 0; i < count; ++i) {
        onMainAfter(static_cast<double>(i) * keyInterval,
                    [&events = platform_->events, key] { postSystemKey(events, key); });
    }
}

void VolumeStep::refreshVolumeLevelLater(std::int64_t keyPresses) const {
    // In the background again: the sound system may keep its callers waiting.
    onMainAfter(settlingTime + keyInterval * static_cast<double>(keyPresses),
                [platform = platform_, owner = owner_, report = report_] {
                    platform->runLoop.asyncBackground([&audio = platform->audio, owner, report] {
                        if (!owner.expired()) {
                            report(percent(OutputVolume(audio).getOutputVolume()));
                        }
                    });
                });
}

template <class Action>
void VolumeStep::onMainAfter(double seconds, Action action) const {
    RunLoop& runLoop = platform_->runLoop;
    runLoop.async([&runLoop, seconds, owner = owner_, action = std::move(action)] {
        runLoop.asyncAfter(seconds, [owner, action] {
            if (!owner.expired()) {
                action();
            }
        });
    });
}

} // namespace quillon
