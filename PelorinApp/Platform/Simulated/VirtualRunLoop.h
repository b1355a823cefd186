#pragma once

#include "Platform/MainQueue.h"
#include "Platform/RunLoop.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A run loop in virtual time: nothing happens until the test or trace moves the clock, and then
/// everything happens in a defined order. Single-threaded; "background" work runs in turn, too.
///
/// Time is kept in whole microseconds, so that intervals add up exactly.
class VirtualRunLoop final : public RunLoop {
  public:
    using Microseconds = std::int64_t;

    TimerRef asyncAfter(double seconds, std::function<void()> work) override;
    TimerRef scheduleRepeating(double seconds, std::function<void()> work) override;
    std::unique_ptr<SerialQueue> makeSerialQueue(std::string_view label) override;
    [[nodiscard]] std::chrono::system_clock::time_point now() const override;
    [[nodiscard]] double uptime() const override;

    [[nodiscard]] Microseconds time() const { return time_; }

    /// Somebody sets the wall clock; uptime and timers know nothing of it.
    void stepClock(double seconds);

    /// Runs the main queue, then the background queue, then the serial ones, until all are empty.
    void drain();

    /// Drops what is queued without running it.
    void discardQueued();

    /// Moves the clock to `time`, firing each timer that falls due on the way, oldest first among
    /// those of one moment, and draining the queues after each. A time in the past fires nothing.
    void advanceTo(Microseconds time);
    void advance(double seconds);

    /// The labels of all serial queues that were made, oldest first.
    [[nodiscard]] const std::vector<std::string>& queueLabels() const { return queueLabels_; }

    /// How many timers are scheduled: for tests that something has stopped ticking.
    [[nodiscard]] std::size_t timerCount() const { return timers_.size(); }

  protected:
    void enqueueMain(std::unique_ptr<Work> work) override;
    void enqueueBackground(std::unique_ptr<Work> work) override;

  private:
    class VirtualTimer;
    class VirtualSerialQueue;
    struct Due {
        Microseconds at;
        std::uint64_t age; // creation order; a repeating timer keeps its age
        bool operator<(const Due& other) const {
            return at != other.at ? at < other.at : age < other.age;
        }
    };

    TimerRef schedule(double seconds, bool repeats, std::function<void()> work);
    void fireNext();
    bool runSerial();

    Microseconds time_ = 0;
    Microseconds clockOffset_ = 0;
    std::uint64_t timersMade_ = 0;
    std::map<Due, std::shared_ptr<VirtualTimer>> timers_;
    MainQueue main_;
    MainQueue background_;
    std::vector<std::weak_ptr<MainQueue>> serial_; // oldest first
    std::vector<std::string> queueLabels_;
};

} // namespace quillon
