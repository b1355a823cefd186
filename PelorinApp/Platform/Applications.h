#pragma once

#include "Platform/Application.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace quillon {

using ProcessId = std::int32_t;

/// How an application is brought forward: bits, to be added up.
enum class ActivationOptions : std::uint32_t {
    allWindows = 1,
    ignoringOtherApps = 2, // also when another application is being used
};
constexpr ActivationOptions operator|(ActivationOptions a, ActivationOptions b) {
    return static_cast<ActivationOptions>(static_cast<std::uint32_t>(a) |
                                          static_cast<std::uint32_t>(b));
}

/// An application as it was when it was asked for.
class RunningApplication {
  public:
    virtual ~RunningApplication() = default;

    [[nodiscard]] virtual ProcessId processIdentifier() const = 0;

    /// As a person would call it; nothing when that is not known.
    [[nodiscard]] virtual std::optional<std::string> localizedName() const = 0;
    [[nodiscard]] virtual ActivationPolicy activationPolicy() const = 0;

    /// Asks the system to bring the application forward and returns at once. One that has ended
    /// meanwhile, or hangs, is no error.
    virtual void activate(ActivationOptions options) = 0;
};
using RunningApplicationRef = std::shared_ptr<RunningApplication>;

/// The applications that run. Main thread only.
class Applications {
  public:
    virtual ~Applications() = default;

    /// The one that gets what is typed; null when there is none.
    virtual RunningApplicationRef frontmostApplication() = 0;

    /// Null when no application has this process id.
    virtual RunningApplicationRef runningApplication(ProcessId process) = 0;
};

} // namespace quillon
