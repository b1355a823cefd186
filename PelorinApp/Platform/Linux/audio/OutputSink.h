#pragma once

#include <cstdint>

#include <pulse/volume.h>

namespace quillon {

/// What a sound server says of one of its outputs.
struct OutputSink {
    std::uint32_t index = 0;
    pa_cvolume volume{}; // of its channels
    bool isMuted = false;
};

} // namespace quillon
