#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

namespace quillon {

/// The ids that the X server lets one connection give to what it makes.
struct ResourceRange {
    std::uint32_t base = 0;
    std::uint32_t mask = 0;

    /// The connection must not be broken.
    [[nodiscard]] static ResourceRange of(xcb_connection_t* connection) {
        const xcb_setup_t* setup = xcb_get_setup(connection);
        return {setup->resource_id_base, setup->resource_id_mask};
    }

    [[nodiscard]] bool contains(std::uint32_t id) const { return (id & ~mask) == base; }
    bool operator==(const ResourceRange&) const = default;
};

/// Tells the windows of this program from those of others: by the connections that it makes windows
/// on. Main thread only.
class OwnWindows {
  public:
    void add(const ResourceRange& range) { ranges_.push_back(range); }

    /// When the connection is closed: the server hands its ids out again.
    void remove(const ResourceRange& range) { std::erase(ranges_, range); }

    [[nodiscard]] bool contains(xcb_window_t window) const {
        return std::any_of(ranges_.begin(), ranges_.end(),
                           [&](const ResourceRange& range) { return range.contains(window); });
    }

  private:
    std::vector<ResourceRange> ranges_; // a few
};

} // namespace quillon
