#pragma once

#include "Platform/AudioHardware.h"
#include "Platform/Simulated/ActionSink.h"

#include <optional>
#include <set>
#include <string>

namespace quillon {

/// A sound card in memory, with the faults that real ones have. Every write that it takes is
/// reported.
class SimulatedAudioHardware final : public AudioHardware {
  public:
    /// Controls are named by the four characters of their selector. One that is not settable exists
    /// all the same.
    struct OutputDevice {
        double volume = 0.5;
        bool muted = false;
        std::set<std::string, std::less<>> settable{"mute", "vmvc"};
        std::optional<double> step; // takes only multiples of it
        bool readOnly = false;      // refuses whatever is written
    };

    explicit SimulatedAudioHardware(ActionSink sink) : sink_(std::move(sink)) {}

    [[nodiscard]] bool getPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                       std::span<std::byte> data) override;
    [[nodiscard]] std::optional<bool>
    isPropertySettable(AudioObjectId object, const AudioPropertyAddress& address) override;
    [[nodiscard]] bool setPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                       std::span<const std::byte> data) override;

    std::optional<OutputDevice> device = OutputDevice{}; // none: there is no output device

  private:
    [[nodiscard]] bool isControl(AudioObjectId object, const AudioPropertyAddress& address) const;
    [[nodiscard]] bool isSettable(const AudioPropertyAddress& address) const;
    void setVolume(float volume);

    ActionSink sink_;
};

} // namespace quillon
