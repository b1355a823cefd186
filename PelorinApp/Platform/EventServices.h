#pragma once

#include "Platform/Event.h"
#include "Platform/Geometry.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace quillon {

/// An opaque handle. Letting go of the last reference removes the tap.
class EventTap {
  public:
    virtual ~EventTap() = default;
};
using EventTapRef = std::shared_ptr<EventTap>;

/// What a tap does to every event of a kind: all deltas of both axes change their sign.
struct ConstantRewrite {
    bool reversesLines = false;      // plain wheels
    bool reversesContinuous = false; // precise scrolling, as of a trackpad
    bool operator==(const ConstantRewrite&) const = default;
};

/// A message among the system's own parts, in the form that special keys have: data1 is then the
/// key's code in its upper half and, in the lower, 0xA00 for down or 0xB00 for up.
struct SystemDefinedEvent {
    Point location;
    std::uint64_t modifierFlags = 0;
    double timestamp = 0;
    std::int64_t windowNumber = 0;
    std::int16_t subtype = 0;
    std::int64_t data1 = 0;
    std::int64_t data2 = 0;
};

/// What connects a tap to the main run loop (RunLoop::addSource). A tap whose source is on no run
/// loop gets no events.
class RunLoopSource {
  public:
    virtual ~RunLoopSource() = default;
    virtual void attach() = 0;
    virtual void detach() = 0;
};
using RunLoopSourceRef = std::shared_ptr<RunLoopSource>;

enum class TapLocation : std::uint32_t { hid = 0 };
enum class TapPlacement : std::uint32_t { headInsert = 0 };

/// A filtering tap may consume and rewrite events; whatever one does that only listens, they pass
/// as they are.
enum class TapOptions : std::uint32_t { filtering = 0, listenOnly = 1 };

/// Runs on the main thread. Returns the event to pass it on (perhaps rewritten), null to consume
/// it. `event` is null for the two tap-disabled types.
using EventTapCallback = Event* (*)(EventType type, Event* event, void* userInfo);

/// Says where on the given screens a tap could consume. Called on any thread, at any time, also
/// after the tap is gone: it must own everything that it reads.
using ArmedAt = std::function<bool(Point pointer, std::span<const Rect> screens)>;

/// Taps into the stream of input events, ahead of the applications.
///
/// Main thread only. Taps run newest first; each may pass, rewrite or consume. A tap that does not
/// answer in time is disabled, the event passes, and the tap's callback is later told so with
/// EventType::tapDisabledByTimeout; enabling it again is the callback's business.
///
/// A press that was consumed is gone for the programs. Its release is an event of its own, which a
/// tap may be asked about or not; a platform whose programs take harm from a release without its
/// press keeps the one of a consumed press by itself.
class EventServices {
  public:
    virtual ~EventServices() = default;

    /// Null when the system grants no tap. `owner` is the id of the tool, for diagnostics. The
    /// tap starts disabled and without a source.
    virtual EventTapRef createTap(TapLocation location, TapPlacement placement, TapOptions options,
                                  std::uint64_t eventsOfInterest, EventTapCallback callback,
                                  void* userInfo, std::string_view owner) = 0;

    virtual RunLoopSourceRef createRunLoopSource(const EventTapRef& tap) = 0;

    virtual void enableTap(EventTap& tap, bool enable) = 0;

    /// Called on the main thread when the system takes the tap away for good (it is not called
    /// when the owner lets go of it). The handler may release the tap.
    virtual void setInvalidationHandler(EventTap& tap, std::function<void()> handler) = 0;

    /// A hint for systems that must hold something of the user's to be able to consume: they hold
    /// it only where `armedAt` says so, and nothing when it is empty. Others ignore it.
    virtual void setArmedAt(EventTap& tap, ArmedAt armedAt) = 0;

    /// A hint for systems on which the devices themselves can do what the tap does to events: there
    /// they do, and the tap is asked only about the events that other taps may consume, as they
    /// were before. Others ignore it.
    virtual void setConstantRewrite(EventTap& tap, ConstantRewrite rewrite) = 0;

    /// An event of no type, at the pointer's place; null when the system makes none.
    virtual EventRef createEvent() = 0;

    /// A press or release of a button. `position` in points, origin at the main screen's top left.
    /// Null when the system makes none.
    virtual EventRef createMouseEvent(EventType type, Point position, MouseButton button) = 0;

    /// Null when the system makes none.
    virtual EventRef createSystemDefinedEvent(const SystemDefinedEvent& event) = 0;

    /// Hands an event that was made here to the system, as if a device had sent it. What a callback
    /// posts comes after the event that it answers. It is never reported to listen-only monitors of
    /// this program.
    virtual void post(TapLocation location, const Event& event) = 0;

    /// `handler` is called on the main thread when the user demands all input back, by a chord that
    /// the system watches for while there is a tap. Nothing is held any more by then; the handler
    /// switches off whatever would hold again.
    virtual void setPanicHandler(std::function<void()> handler) = 0;
};

} // namespace quillon
