#pragma once

#include <functional>
#include <string_view>

namespace quillon {

/// What people have asked of every program that shows something.
struct DisplayOptions {
    bool shouldReduceMotion = false;
    bool shouldIncreaseContrast = false;

    bool operator==(const DisplayOptions&) const = default;
};

/// What the desktop does with things that belong to other programs, and wants of all of them. Main
/// thread only.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// Opens an address with the program that the user has chosen for its kind. Returns at once.
    virtual void open(std::string_view url) = 0;

    [[nodiscard]] virtual DisplayOptions displayOptions() const = 0;

    /// Called whenever they have changed; the last handler that was set.
    virtual void setDisplayOptionsHandler(std::function<void()> changed) = 0;
};

} // namespace quillon
