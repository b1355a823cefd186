#pragma once

#include "Platform/Platform.h"
#include "Tools/Edges/InputTap.h"
#include "Tools/Pointer/ThreeFingerTouchMonitor.h"

#include <functional>
#include <memory>
#include <string_view>

namespace quillon {

/// Makes a middle click of a press of the left button while exactly three fingers rest on the
/// trackpad. Only the press is replaced; the release that follows is the system's to deal with.
///
/// Main thread only.
class ThreeFingerPress {
  public:
    static constexpr std::string_view toolId = "tool.trackpadMiddleClick";

    /// `isOn` is asked at every press.
    ThreeFingerPress(Platform& platform, std::shared_ptr<ThreeFingerTouchMonitor> monitor,
                     std::function<bool()> isOn);
    ThreeFingerPress(const ThreeFingerPress&) = delete;
    ThreeFingerPress& operator=(const ThreeFingerPress&) = delete;
    ~ThreeFingerPress();

    /// Starts the monitor and installs the tap.
    void start();
    void stop();

    /// What isOn() answers may have changed.
    void update();

    [[nodiscard]] bool hasTap() const { return mouseTap_.exists(); }

    /// The mouse tap's callback; userInfo is the ThreeFingerPress.
    static Event* tapCallback(EventType type, Event* event, void* userInfo);

  private:
    void setArmed(bool armed);
    void clickMiddle();

    Platform& platform_;
    std::shared_ptr<ThreeFingerTouchMonitor> monitor_;
    std::function<bool()> isOn_;
    InputTap mouseTap_;
};

} // namespace quillon
