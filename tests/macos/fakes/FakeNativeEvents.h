#pragma once

#include <CoreFoundation/CFCGTypes.h>

#include <cstdint>
#include <vector>

namespace quillon::fakes {

/// Events as the window toolkit has them: made, and reported to monitors.
class FakeNativeEvents {
  public:
    struct OtherEventRequest {
        unsigned long type;
        CGPoint location;
        unsigned long modifierFlags;
        double timestamp;
        long windowNumber;
        bool hasContext;
        short subtype;
        long data1;
        long data2;
    };
    struct Happening {
        unsigned long type = 0;
        long buttonNumber = 0;
        double scrollingDeltaX = 0;
        double scrollingDeltaY = 0;
        double deltaX = 0;
        double deltaY = 0;
        std::int64_t sourceUserData = 0;
        bool hasLowLevelForm = true;
    };

    std::vector<OtherEventRequest> otherEventRequests;
    std::vector<unsigned long long> monitorRequests; // their masks
    bool makesEvents = true;
    bool makesLowLevelForms = true;
    bool grantsMonitors = true;
    CGPoint mouseLocation{};

    /// How often an event was asked for what its type does not have, which the system forbids.
    int forbiddenQuestions = 0;

    [[nodiscard]] int monitorCount() const { return static_cast<int>(monitors_.size()); }

    /// Reports to the monitors that have asked for its type.
    void happen(const Happening& happening);

    /// Also takes the monitors away.
    void reset();

    // For the system's classes.
    void addMonitor(void* monitor) { monitors_.push_back(monitor); }
    void removeMonitor(void* monitor) { std::erase(monitors_, monitor); }

  private:
    std::vector<void*> monitors_;
};

FakeNativeEvents& fakeNativeEvents();

} // namespace quillon::fakes
