#pragma once

#include "Platform/Linux/keys/KeyInjector.h"
#include "Platform/Linux/keys/MediaPlayers.h"
#include "Platform/Linux/keys/SpecialKey.h"
#include "Platform/Linux/session/ThreadQueue.h"
#include "Platform/RunLoop.h"

#include <chrono>
#include <memory>
#include <string>

namespace quillon {

/// Strokes keys for sound and for media, in order, on a thread of its own.
///
/// Keys for sound always go to the X server. A media key goes there when another program has
/// grabbed it, which will know what to do; otherwise to a player over the session's bus, and if
/// there is none, to the X server after all: the focused program may know it. Never to both.
class SpecialKeys {
  public:
    /// How long the keyboard keeps a keysym that it got for a stroke: programs ask the server what
    /// a key means only after it has been pressed, and each change is a burden on all of them.
    static constexpr std::chrono::seconds borrowedFor{2};

    /// `busAddress` is that of the session's bus; empty when there is none. The run loop must
    /// outlive this object. Main thread.
    SpecialKeys(RunLoop& runLoop, const std::string& busAddress);
    SpecialKeys(const SpecialKeys&) = delete;
    SpecialKeys& operator=(const SpecialKeys&) = delete;
    ~SpecialKeys();

    /// Press and release. Returns at once. Main thread.
    void stroke(SpecialKey key);

  private:
    void strokeNow(SpecialKey key);
    void inject(SpecialKey key);
    void keepBorrowed();

    RunLoop& runLoop_;
    TimerRef giveBack_;
    std::shared_ptr<SpecialKeys*> self_; // what work on the main queue holds weakly
    WakeUp end_;
    MediaPlayers players_;
    KeyInjector injector_;             // of the keys' thread
    ThreadQueue keys_{"special keys"}; // last: its thread uses what stands above
};

} // namespace quillon
