#pragma once

#include "Platform/AudioHardware.h"
#include "Platform/Linux/audio/PulseServer.h"
#include "Platform/Linux/audio/SinkIds.h"
#include "Platform/Linux/audio/SinkVolumes.h"

#include <functional>
#include <optional>

namespace quillon {

class PulseLoop;

/// The sinks of the sound server as audio objects: the system object stands for the sink that is
/// the default one at the moment. Every answer comes once. On the loop's thread only.
class SinkDevices {
  public:
    struct Device {
        AudioObjectId id = 0;
        std::optional<float> volume; // as SinkVolumes reads it
        bool isMuted = false;
    };
    using OnDevice = std::function<void(std::optional<Device>)>;

    /// Nothing for a failure.
    using OnDone = std::function<void(std::optional<bool>)>;

    /// `loop` outlives this object, which is to be destroyed when the loop has stopped.
    explicit SinkDevices(PulseLoop& loop);

    void connect(PulseServer::OnDone answer) { server_.connect(std::move(answer)); }

    /// For ever; everything that is still to be answered fails.
    void close() { server_.close(); }

    void read(AudioObjectId object, const OnDevice& answer);

    /// Asks `isWanted` again before anything is changed.
    void setVolume(AudioObjectId object, float volume, const std::function<bool()>& isWanted,
                   const OnDone& answer);
    void setMute(AudioObjectId object, bool isMuted, const OnDone& answer);

  private:
    void writeVolume(const OutputSink& sink, float volume, const OnDone& answer);
    void sinkChanged(std::uint32_t index);

    SinkIds ids_;
    SinkVolumes volumes_;
    PulseServer server_;
};

} // namespace quillon
