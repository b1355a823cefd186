#pragma once

#include "Platform/AudioHardware.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quillon {

/// What the outputs of a sound server are called as audio objects. A server that is started again
/// may number its outputs as the one before did, but no object is another one's namesake.
class SinkIds {
  public:
    [[nodiscard]] AudioObjectId idOf(std::uint32_t index) {
        const auto known = std::find(indices_.begin(), indices_.end(), index);
        const auto place = static_cast<AudioObjectId>(known - indices_.begin());
        if (known == indices_.end()) {
            indices_.push_back(index);
        }
        return first_ + place;
    }

    /// Nothing for what is no output of this server.
    [[nodiscard]] std::optional<std::uint32_t> indexOf(AudioObjectId id) const {
        const std::size_t place = id - first_;
        return id >= first_ && place < indices_.size() ? std::optional(indices_[place])
                                                       : std::nullopt;
    }

    /// There is another server, or none.
    void forgetAll() {
        first_ += static_cast<AudioObjectId>(indices_.size());
        indices_.clear();
    }

  private:
    AudioObjectId first_ = audioSystemObject + 1;
    std::vector<std::uint32_t> indices_;
};

} // namespace quillon
