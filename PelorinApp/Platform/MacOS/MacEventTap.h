#pragma once

#include "Platform/EventServices.h"
#include "Platform/MacOS/CoreFoundationTypes.h"
#include "Platform/RunLoop.h"

#include <CoreGraphics/CoreGraphics.h>

#include <functional>
#include <memory>

namespace quillon {

/// A tap of the system: a port that the window server sends events through.
class MacEventTap final : public EventTap {
  public:
    /// Null when the system grants none. `runLoop` brings to the main thread what the system says
    /// on others.
    static std::shared_ptr<MacEventTap> create(RunLoop& runLoop, CGEventTapLocation location,
                                               CGEventTapPlacement placement,
                                               CGEventTapOptions options,
                                               CGEventMask eventsOfInterest,
                                               EventTapCallback callback, void* userInfo);

    MacEventTap(EventTapCallback callback, void* userInfo)
        : callback_(callback), userInfo_(userInfo) {}
    MacEventTap(const MacEventTap&) = delete;
    MacEventTap& operator=(const MacEventTap&) = delete;
    ~MacEventTap() override;

    void enable(bool enable) { CGEventTapEnable(port_.get(), enable); }

    /// Called on the main thread, once.
    void setInvalidationHandler(std::function<void()> handler);

    [[nodiscard]] CFMachPortRef port() const { return port_.get(); }

  private:
    static CGEventRef answer(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                             void* context) noexcept;
    static void portInvalidated(CFMachPortRef port, void* info) noexcept;

    EventTapCallback callback_;
    void* userInfo_;
    CfOwned<CFMachPortRef> port_;
    std::function<void()> invalidated_;
};

} // namespace quillon
