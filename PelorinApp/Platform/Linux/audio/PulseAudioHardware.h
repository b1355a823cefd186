#pragma once

#include "Platform/AudioHardware.h"
#include "Platform/Linux/audio/CallCount.h"
#include "Platform/Linux/audio/PulseLoop.h"
#include "Platform/Linux/audio/Reply.h"
#include "Platform/Linux/audio/SinkDevices.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>

namespace quillon {

/// The outputs of PulseAudio, or of whoever speaks its protocol. The default output device is the
/// sink that is the default one at the moment; each sink has both volumes, which are the same
/// (SinkVolumes), and mute. All of them can be set: a server gives every sink that has a volume at
/// all one of its own making where the hardware has none.
///
/// Every call asks the server, so it knows of no change made by others too late, and nothing wakes
/// this process while nobody calls. A call takes no longer than `patience`. When one has taken
/// that long, those that follow fail at once until the server answers again. What nobody waits for
/// any more is not begun. Writing is one after the other, whichever threads they come from.
class PulseAudioHardware final : public AudioHardware {
  public:
    static constexpr std::chrono::milliseconds patience{250};

    /// Calls that are under way fail first.
    ~PulseAudioHardware() override;

    [[nodiscard]] bool getPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                       std::span<std::byte> data) override;
    [[nodiscard]] std::optional<bool>
    isPropertySettable(AudioObjectId object, const AudioPropertyAddress& address) override;
    [[nodiscard]] bool setPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                       std::span<const std::byte> data) override;

  private:
    using Clock = std::chrono::steady_clock;

    /// Has `begin` called on the loop's thread, with a connection, and waits for what is given.
    template <class T>
    [[nodiscard]] std::optional<T>
    ask(Clock::time_point deadline,
        std::function<void(const std::shared_ptr<Reply<T>>& reply)> begin);

    [[nodiscard]] std::optional<SinkDevices::Device> device(AudioObjectId object);
    [[nodiscard]] bool setVolume(AudioObjectId object, float volume);
    [[nodiscard]] bool setMute(AudioObjectId object, bool isMuted);

    OverdueReplies overdue_;
    std::timed_mutex writing_;
    CallCount calls_;
    PulseLoop loop_;
    SinkDevices devices_{loop_};
};

} // namespace quillon
