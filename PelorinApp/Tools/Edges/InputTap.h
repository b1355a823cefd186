#pragma once

#include "Platform/Platform.h"

#include <functional>
#include <string_view>

namespace quillon {

/// An active tap on events of one type, installed on the main run loop or absent.
class InputTap {
  public:
    InputTap(Platform& platform, EventType type) : platform_(platform), type_(type) {}
    InputTap(const InputTap&) = delete;
    InputTap& operator=(const InputTap&) = delete;
    ~InputTap() { remove(); }

    /// True when the tap is there afterwards. Does nothing when there is one already.
    bool install(EventTapCallback callback, void* userInfo, std::string_view owner);
    void remove();

    /// Switches the tap on again after the system has switched it off.
    void reenable();

    void setArmedAt(ArmedAt armedAt);
    void setConstantRewrite(ConstantRewrite rewrite);

    [[nodiscard]] bool exists() const { return eventTap_ != nullptr; }

  private:
    Platform& platform_;
    EventType type_;
    EventTapRef eventTap_;
    RunLoopSourceRef runLoopSource_;
};

} // namespace quillon
