#pragma once

#include "Platform/RunLoop.h"

namespace quillon {

/// The queues and timers of the process. Background work goes to the system's global queue of
/// user-initiated quality, which is a concurrent one.
class MacRunLoop final : public RunLoop {
  public:
    std::unique_ptr<SerialQueue> makeSerialQueue(std::string_view label) override;
    TimerRef asyncAfter(double seconds, std::function<void()> work) override;
    TimerRef scheduleRepeating(double seconds, std::function<void()> work) override;
    [[nodiscard]] std::chrono::system_clock::time_point now() const override;

    /// Does not advance while the system sleeps.
    [[nodiscard]] double uptime() const override;

  protected:
    void enqueueMain(std::unique_ptr<Work> work) override;
    void enqueueBackground(std::unique_ptr<Work> work) override;
};

} // namespace quillon
