#pragma once

#include "Platform/Linux/audio/OutputSink.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace quillon {

/// One volume for all channels of an output, 0…1: that of the loudest one, as desktops show it.
///
/// Balance: the channels keep their proportions, as they were before the first of several changes
/// in a row. So nothing is lost by rounding, nor by silence. Whatever somebody else makes of the
/// channels meanwhile counts instead.
///
/// Above 100 % an output reads as 1. There, a write of a little less is a step: it lowers the
/// output by what is missing to 1, instead of dropping it to where that is below 100 %. Who reads
/// at once to see whether the output has followed gets what he has written; later it reads as 1
/// again, until it is below. A write of much less is no step and taken as it is; a write of 1
/// leaves the output where it is. So scrolling down comes down evenly from wherever it is, and
/// scrolling up never leads above 100 %.
class SinkVolumes {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// How long a step down from above 100 % reads as it was written. Two scrolls are further
    /// apart.
    static constexpr std::chrono::milliseconds stepReads{50};

    /// The furthest below 1 that is a step. The largest one that is scrolled is half of it.
    static constexpr float largestStep = 0.05F;

    /// Whether it has one.
    [[nodiscard]] static bool hasVolume(const OutputSink& sink);

    [[nodiscard]] float reading(const OutputSink& sink, Time now) const;

    /// What its channels are to become, for a volume of 0…1; nothing when they are to stay. It
    /// is taken for granted that they become that.
    [[nodiscard]] std::optional<pa_cvolume> change(const OutputSink& sink, float wanted, Time now);

    /// Whether proportions are kept that the output itself no longer has. To be told then of every
    /// change of it: somebody may raise it and make it silent again, which looks the same.
    [[nodiscard]] bool isSilenced(std::uint32_t index) const;
    void changed(const OutputSink& sink);
    void forget() { balance_.reset(); }

  private:
    struct Balance {
        std::uint32_t index;
        pa_cvolume proportions;
        pa_cvolume latest; // what we made of them
    };
    struct Step {
        std::uint32_t index;
        pa_volume_t loudest; // what we made it
        float reading;
        Time end;
    };

    [[nodiscard]] pa_volume_t loudestFor(const OutputSink& sink, float wanted, Time now);

    std::optional<Balance> balance_;
    std::optional<Step> step_;
};

} // namespace quillon
