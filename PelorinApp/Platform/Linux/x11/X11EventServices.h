#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/EventServices.h"
#include "Platform/Linux/keys/SpecialKey.h"
#include "Platform/Linux/reversal/ReversedDevices.h"
#include "Platform/Linux/reversal/ScrollReversal.h"
#include "Platform/Linux/session/WakeUp.h"
#include "Platform/Linux/x11/InputHolder.h"
#include "Platform/Linux/x11/TapExchange.h"
#include "Platform/Linux/x11/X11Displays.h"
#include "Platform/Linux/x11/X11EventTap.h"
#include "Platform/RunLoop.h"

#include <QSocketNotifier>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace quillon {

/// Taps on an X11 desktop: the main thread's side, which asks the taps and tells the holder where
/// to hold.
class X11EventServices final : public EventServices {
  public:
    /// `mayTap` says whether the X server grants input control at the moment.
    /// `watchdog` is the program that guards the holder. What is posted is written down in
    /// `postedEvents`, what is consumed in `caughtPresses`; both outlive this object.
    X11EventServices(RunLoop& runLoop, Diagnostics& diagnostics, X11Displays& displays,
                     std::function<bool()> mayTap, std::filesystem::path watchdog,
                     PostedEvents& postedEvents, CaughtPresses& caughtPresses);
    ~X11EventServices() override;

    EventTapRef createTap(TapLocation location, TapPlacement placement, TapOptions options,
                          std::uint64_t eventsOfInterest, EventTapCallback callback, void* userInfo,
                          std::string_view owner) override;
    RunLoopSourceRef createRunLoopSource(const EventTapRef& tap) override;
    void enableTap(EventTap& tap, bool enable) override;
    void setInvalidationHandler(EventTap& tap, std::function<void()> handler) override;
    void setArmedAt(EventTap& tap, ArmedAt armedAt) override;
    void setConstantRewrite(EventTap& tap, ConstantRewrite rewrite) override;
    EventRef createEvent() override;
    EventRef createMouseEvent(EventType type, Point position, MouseButton button) override;

    EventRef createSystemDefinedEvent(const SystemDefinedEvent& event) override;

    /// Presses and releases of mouse buttons, and of special keys.
    ///
    /// Buttons happen where the pointer is when the server gets to them, whatever place they name:
    /// to move it there would take it out of the user's hand. Before the first tap there is nothing
    /// that posts them. A key's press stands for the whole stroke, so that none stays down; its
    /// release adds nothing.
    void post(TapLocation location, const Event& event) override;
    void setPanicHandler(std::function<void()> handler) override;

    /// What strokes the special keys that are posted; without it they come to nothing. Called on
    /// the main thread.
    void setKeyHandler(std::function<void(SpecialKey)> handler);

  private:
    class Source;

    void publishTaps();
    void reverseSoon();
    [[nodiscard]] ConstantRewrite wantedRewrite() const;
    void answerHolder();
    Verdict runTaps(const TapQuestion& question);
    void postKey(const SystemDefinedEvent& event);
    void settlePosts(bool areValid);
    void switchOff(X11EventTap& tap, EventType waiting);
    void switchOffAll(EventType waiting);
    void startHolder();
    void panicked();
    void holderLost();
    [[nodiscard]] std::vector<std::shared_ptr<X11EventTap>> living() const;

    RunLoop& runLoop_;
    Diagnostics& diagnostics_;
    X11Displays& displays_;
    std::function<bool()> mayTap_;
    std::filesystem::path watchdog_;
    std::function<void()> panicHandler_;
    std::function<void(SpecialKey)> keyHandler_;
    std::vector<std::weak_ptr<X11EventTap>> taps_; // newest first
    std::weak_ptr<X11EventTap> asked_;             // the one that had the latest event last
    X11Displays::GeometryRef geometry_;
    WakeUp question_;
    QSocketNotifier questionNotifier_;
    TapExchange exchange_;
    PostedEvents& postedEvents_;
    CaughtPresses& caughtPresses_;
    ReversedDevices reversed_;
    ScrollReversal reversal_;
    bool isReversalDue_ = false;
    bool isAnswering_ = false;
    std::vector<PostedButton> posts_;         // of callbacks that have yet to answer
    std::vector<SpecialKey> keyPosts_;        // the same
    std::shared_ptr<X11EventServices*> self_; // what work on the main queue holds weakly
    std::unique_ptr<InputHolder> holder_;     // last: its thread uses what stands above
};

} // namespace quillon
