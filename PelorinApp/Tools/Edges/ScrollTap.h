#pragma once

#include "Platform/Platform.h"

#include <functional>
#include <string_view>

namespace quillon {

/// An active tap on scroll events, installed on the main run loop or absent.
class ScrollTap {
  public:
    explicit ScrollTap(Platform& platform) : platform_(platform) {}
    ScrollTap(const ScrollTap&) = delete;
    ScrollTap& operator=(const ScrollTap&) = delete;
    ~ScrollTap() { remove(); }

    /// True when the tap is there afterwards. Does nothing when there is one already.
    bool install(EventTapCallback callback, void* userInfo, std::string_view owner);
    void remove();

    /// Switches the tap on again after the system has switched it off.
    void reenable();

    void setArmedAt(ArmedAt armedAt);

    [[nodiscard]] bool exists() const { return eventTap_ != nullptr; }

  private:
    Platform& platform_;
    EventTapRef eventTap_;
    RunLoopSourceRef runLoopSource_;
};

} // namespace quillon
