#pragma once

#include <string_view>

namespace quillon {

/// What the program says of itself, a line at a time. Any thread.
class Diagnostics {
  public:
    virtual ~Diagnostics() = default;

    /// `text` carries no line end; what in it would break the line is replaced.
    virtual void line(std::string_view text) = 0;
};

} // namespace quillon
