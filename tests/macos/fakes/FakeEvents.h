#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace quillon::fakes {

/// What an event is, for looking at it after it has gone.
struct EventRecord {
    CGEventType type = kCGEventNull;
    CGPoint location{};
    std::map<std::uint32_t, double> fields;

    /// 0 for a field that it does not carry.
    [[nodiscard]] double field(CGEventField number) const {
        const auto found = fields.find(number);
        return found == fields.end() ? 0.0 : found->second;
    }
};

EventRecord recordOf(CGEventRef event);

/// The stream of input events: what devices send and programs post goes through the taps, newest
/// first, and then to the programs. Main thread only, as a test has it.
class FakeEvents {
  public:
    using Fields = std::map<CGEventField, double>;

    struct TapRequest {
        CGEventTapLocation location;
        CGEventTapPlacement placement;
        CGEventTapOptions options;
        CGEventMask eventsOfInterest;
        CGEventTapCallBack callback;
        void* userInfo;
    };
    struct Post {
        CGEventTapLocation location;
        EventRecord event;
    };
    struct MouseEventRequest {
        bool hasSource;
        CGEventType type;
        CGPoint position;
        CGMouseButton button;
    };

    // What the system has been asked for.
    std::vector<TapRequest> tapRequests;
    std::vector<MouseEventRequest> mouseEventRequests;
    std::vector<Post> posts;

    // What it will answer.
    bool grantsTaps = true;
    bool makesEvents = true;
    CGPoint pointer{}; // from the top left

    /// What came through the taps, posts included.
    std::vector<EventRecord> arrived;

    /// Told of each event that comes through the taps, in the form in which it does.
    std::function<void(CGEventRef)> onArrival;

    /// Somebody else's event. Whether it came through; `event` is then as the taps left it.
    bool send(CGEventRef event);

    // The user's hand, at the pointer's place. Whether it came through.
    bool scroll(const Fields& fields);
    bool press(CGMouseButton button);
    bool release(CGMouseButton button);

    /// The taps that there are, first the one that is asked first.
    [[nodiscard]] std::vector<CFMachPortRef> taps() const;
    [[nodiscard]] bool isEnabled(CFMachPortRef tap) const;

    /// Whether events come to it: enabled, and on the main run loop in the modes in which events
    /// are always handled.
    [[nodiscard]] bool isListening(CFMachPortRef tap) const;

    /// The system switches off every tap that is on, and tells it so.
    void disableTaps(CGEventType reason);

    /// The system takes every tap away.
    void invalidateTaps();

    /// Forgets records and answers. Taps stay as long as somebody has them.
    void reset();

    // For the system's functions.
    CFMachPortRef createTap(const TapRequest& request);
    void enableTap(CFMachPortRef tap, bool enable);
    void post(CGEventTapLocation location, CGEventRef event);

  private:
    struct Tap {
        CFMachPortRef port;
        TapRequest request;
        bool isEnabled;
    };
    [[nodiscard]] const Tap* find(CFMachPortRef port) const;
    bool sendMade(CGEventType type, const Fields& fields);
    bool passTaps(CGEventRef event);

    std::vector<Tap> taps_;
    std::vector<CGEventRef> waiting_; // posted while another is on its way
    bool isSending_ = false;
};

FakeEvents& fakeEvents();

} // namespace quillon::fakes
