#pragma once

#include <string>
#include <vector>

namespace quillon::fakes {

/// The timers of the run loop, which go off when a test says so, and the time since the start.
class FakeTimers {
  public:
    struct Schedule {
        double interval;
        bool repeats;
        std::string mode;
    };

    std::vector<Schedule> schedules; // all that were ever scheduled
    double uptime = 0;

    /// Those that are still valid.
    [[nodiscard]] int validCount() const;

    /// Each valid one goes off once.
    void fire();

    /// Also invalidates what there is.
    void reset();

    // For the system's classes.
    void add(void* timer) { timers_.push_back(timer); }
    void remove(void* timer) { std::erase(timers_, timer); }

  private:
    std::vector<void*> timers_;
};

FakeTimers& fakeTimers();

} // namespace quillon::fakes
