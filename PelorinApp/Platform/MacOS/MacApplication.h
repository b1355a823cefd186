#pragma once

#include "Platform/Application.h"
#include "Platform/MacOS/NativeViews.h"

#include <memory>

namespace quillon {

/// The process as the system sees it. To be made before a toolkit that makes a delegate of its own:
/// that one hands on what it is told to the delegate which it finds. Main thread only.
class MacApplication final : public Application {
  public:
    /// `views` must outlive this object.
    explicit MacApplication(const NativeViews& views);
    MacApplication(const MacApplication&) = delete;
    MacApplication& operator=(const MacApplication&) = delete;
    ~MacApplication() override;

    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override;
    void setActivationPolicy(ActivationPolicy policy) override;
    [[nodiscard]] std::optional<EventType> currentEvent() const override;
    void terminate(Sender* sender) override;

    /// To be called when the program is about to end, by whoever ends it; the delegate is told
    /// once.
    void willTerminate();

  private:
    const NativeViews& views_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    id listener_; // which the system itself does not keep
};

} // namespace quillon
