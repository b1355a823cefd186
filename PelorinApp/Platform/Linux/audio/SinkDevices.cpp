#include "Platform/Linux/audio/SinkDevices.h"

#include "Platform/Linux/audio/PulseLoop.h"

#include <chrono>
#include <utility>

namespace quillon {

namespace {

std::optional<bool> orNothing(bool isDone) { return isDone ? std::optional(true) : std::nullopt; }

} // namespace

SinkDevices::SinkDevices(PulseLoop& loop)
    : server_({.api = loop.api(),
               .later = [&loop](std::function<void()> work) { loop.post(std::move(work)); },
               .lost =
                   [this] {
                       ids_.forgetAll();
                       volumes_.forget();
                   },
               .sinkChanged = [this](std::uint32_t index) { sinkChanged(index); }}) {}

void SinkDevices::read(AudioObjectId object, const OnDevice& answer) {
    auto found = [this, answer](const std::optional<OutputSink>& sink) {
        if (!sink) {
            answer(std::nullopt);
            return;
        }
        Device device{.id = ids_.idOf(sink->index), .isMuted = sink->isMuted};
        if (SinkVolumes::hasVolume(*sink)) {
            device.volume = volumes_.reading(*sink, std::chrono::steady_clock::now());
        }
        answer(device);
    };
    if (object == audioSystemObject) {
        server_.askDefaultSink(std::move(found));
    } else if (const auto index = ids_.indexOf(object)) {
        server_.askSink(*index, std::move(found));
    } else {
        answer(std::nullopt);
    }
}

void SinkDevices::setVolume(AudioObjectId object, float volume,
                            const std::function<bool()>& isWanted, const OnDone& answer) {
    const auto index = ids_.indexOf(object);
    if (!index) {
        answer(std::nullopt);
        return;
    }
    server_.askSink(*index, [this, volume, isWanted, answer](const auto& sink) {
        if (sink && SinkVolumes::hasVolume(*sink) && isWanted()) {
            writeVolume(*sink, volume, answer);
        } else {
            answer(std::nullopt);
        }
    });
}

void SinkDevices::writeVolume(const OutputSink& sink, float volume, const OnDone& answer) {
    const auto channels = volumes_.change(sink, volume, std::chrono::steady_clock::now());
    if (!channels) {
        answer(true);
        return;
    }
    server_.watchSinks(volumes_.isSilenced(sink.index));
    server_.setVolume(sink.index, *channels, [answer](bool isDone) { answer(orNothing(isDone)); });
}

void SinkDevices::setMute(AudioObjectId object, bool isMuted, const OnDone& answer) {
    if (const auto index = ids_.indexOf(object)) {
        server_.setMute(*index, isMuted, [answer](bool isDone) { answer(orNothing(isDone)); });
    } else {
        answer(std::nullopt);
    }
}

void SinkDevices::sinkChanged(std::uint32_t index) {
    if (!volumes_.isSilenced(index)) {
        return;
    }
    server_.askSink(index, [this](const std::optional<OutputSink>& sink) {
        if (sink) {
            volumes_.changed(*sink);
        }
    });
}

} // namespace quillon
