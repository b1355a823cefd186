#pragma once

#include "Platform/EventServices.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace quillon {

/// A tap as its owner has made it and as it stands. Main thread only.
class X11EventTap final : public EventTap {
  public:
    /// `changed` is called when it may want to hold more or less than before, also when it ends.
    X11EventTap(std::function<void()> changed, TapOptions tapOptions, std::uint64_t interest,
                EventTapCallback function, void* context, std::string_view tool)
        : options(tapOptions), mask(interest), callback(function), userInfo(context), toolId(tool),
          changed_(std::move(changed)) {}
    X11EventTap(const X11EventTap&) = delete;
    X11EventTap& operator=(const X11EventTap&) = delete;
    ~X11EventTap() override { changed_(); }

    [[nodiscard]] bool wants(EventType type) const {
        return enabled && attached && (mask & eventMask(type)) != 0;
    }

    void setAttached(bool now) {
        attached = now;
        changed_();
    }

    TapOptions options;
    std::uint64_t mask;
    EventTapCallback callback;
    void* userInfo;
    std::string toolId;
    bool enabled = false;
    bool attached = false;
    ArmedAt armedAt;
    ConstantRewrite constantRewrite;
    std::function<void()> invalidated;

  private:
    std::function<void()> changed_;
};

} // namespace quillon
