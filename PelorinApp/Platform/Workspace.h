#pragma once

#include <string_view>

namespace quillon {

/// What the desktop does with things that belong to other programs. Main thread only.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// Opens an address with the program that the user has chosen for its kind. Returns at once.
    virtual void open(std::string_view url) = 0;
};

} // namespace quillon
