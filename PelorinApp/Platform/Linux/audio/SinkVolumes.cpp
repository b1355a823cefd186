#include "Platform/Linux/audio/SinkVolumes.h"

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

/// Servers that reckon in amplitudes may give back one unit more or less.
bool isNear(pa_volume_t one, pa_volume_t other) {
    return std::max(one, other) - std::min(one, other) <= 1;
}

bool isNear(const pa_cvolume& one, const pa_cvolume& other) {
    if (one.channels != other.channels) {
        return false;
    }
    for (unsigned i = 0; i < one.channels; ++i) {
        if (!isNear(one.values[i], other.values[i])) {
            return false;
        }
    }
    return true;
}

pa_volume_t units(double volume) {
    return static_cast<pa_volume_t>(std::lround(volume * PA_VOLUME_NORM));
}

pa_cvolume scaled(const pa_cvolume& proportions, pa_volume_t loudest) {
    const std::uint64_t whole = pa_cvolume_max(&proportions);
    pa_cvolume result = proportions;
    for (unsigned i = 0; i < result.channels; ++i) {
        const std::uint64_t part = whole == 0 ? 1 : proportions.values[i];
        const std::uint64_t of = whole == 0 ? 1 : whole;
        result.values[i] = static_cast<pa_volume_t>((part * loudest + of / 2) / of);
    }
    return result;
}

} // namespace

bool SinkVolumes::hasVolume(const OutputSink& sink) { return pa_cvolume_valid(&sink.volume) != 0; }

float SinkVolumes::reading(const OutputSink& sink, Time now) const {
    const pa_volume_t loudest = pa_cvolume_max(&sink.volume);
    if (step_ && step_->index == sink.index && isNear(step_->loudest, loudest) &&
        now < step_->end) {
        return step_->reading;
    }
    return static_cast<float>(std::min(1.0, static_cast<double>(loudest) / PA_VOLUME_NORM));
}

std::optional<pa_cvolume> SinkVolumes::change(const OutputSink& sink, float wanted, Time now) {
    const pa_volume_t loudest = loudestFor(sink, std::clamp(wanted, 0.0F, 1.0F), now);
    if (loudest == pa_cvolume_max(&sink.volume)) {
        return std::nullopt;
    }
    if (!balance_ || balance_->index != sink.index || !isNear(balance_->latest, sink.volume)) {
        balance_ = {sink.index, sink.volume, sink.volume};
    }
    balance_->latest = scaled(balance_->proportions, loudest);
    return balance_->latest;
}

pa_volume_t SinkVolumes::loudestFor(const OutputSink& sink, float wanted, Time now) {
    const pa_volume_t loudest = pa_cvolume_max(&sink.volume);
    if (loudest <= PA_VOLUME_NORM || wanted < 1.0F - largestStep) {
        step_.reset();
        return units(wanted);
    }
    const float current = reading(sink, now);
    if (wanted >= current) {
        return loudest;
    }
    const pa_volume_t lowered = loudest - units(static_cast<double>(current) - wanted);
    step_ = {sink.index, lowered, wanted, now + stepReads};
    return lowered;
}

bool SinkVolumes::isSilenced(std::uint32_t index) const {
    return balance_ && balance_->index == index && pa_cvolume_is_muted(&balance_->latest) != 0 &&
           pa_cvolume_channels_equal_to(&balance_->proportions,
                                        pa_cvolume_max(&balance_->proportions)) == 0;
}

void SinkVolumes::changed(const OutputSink& sink) {
    if (isSilenced(sink.index) && !isNear(balance_->latest, sink.volume)) {
        forget();
    }
}

} // namespace quillon
