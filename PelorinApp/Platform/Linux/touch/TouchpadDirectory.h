#pragma once

#include "Platform/Posix/files/FileDescriptor.h"

#include <string>
#include <vector>

namespace quillon {

/// Where to find a touchpad.
struct TouchpadNode {
    std::string id; ///< One that comes again under the same path has another one.
    std::string path;
};

/// Which touchpads there are. Used by one thread at a time.
class TouchpadDirectory {
  public:
    virtual ~TouchpadDirectory() = default;

    /// Readable when there may be news; negative when touchpads that come later go unnoticed.
    [[nodiscard]] virtual int descriptor() const = 0;

    /// Takes in the news. True when a touchpad has come or gone, or when one that could not be
    /// opened perhaps can be now.
    virtual bool readNews() = 0;

    [[nodiscard]] virtual std::vector<TouchpadNode> list() = 0;

    /// For reading, without blocking; not open if that is not allowed, or if it has gone.
    [[nodiscard]] virtual FileDescriptor open(const TouchpadNode& node) = 0;
};

} // namespace quillon
