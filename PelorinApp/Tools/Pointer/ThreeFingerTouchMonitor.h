#pragma once

#include "Platform/DynamicLibraries.h"
#include "Platform/RunLoop.h"
#include "Platform/TouchLibrary.h"

#include <atomic>
#include <functional>
#include <memory>

namespace quillon {

/// Knows how many fingers rest on the trackpad, from a touch library that is loaded when the
/// monitor starts. Where there is no library, no trackpad, or an entry point is missing, it stays
/// unstarted, silently, and the count is 0.
///
/// Main thread only, but for the library's own callback. Objects are owned by shared pointers.
class ThreeFingerTouchMonitor : public std::enable_shared_from_this<ThreeFingerTouchMonitor> {
  public:
    /// The instance of the process, made on first use on the current platform.
    static const std::shared_ptr<ThreeFingerTouchMonitor>& shared();

    ThreeFingerTouchMonitor(RunLoop& runLoop, DynamicLibraries& libraries);
    ThreeFingerTouchMonitor(const ThreeFingerTouchMonitor&) = delete;
    ThreeFingerTouchMonitor& operator=(const ThreeFingerTouchMonitor&) = delete;
    ~ThreeFingerTouchMonitor() { stop(); }

    /// Opens the library. True when it was open already, or is now with all entry points there.
    bool load();

    void start();

    /// Also closes the library: the next start loads it anew.
    void stop();

    /// The contacts of the last frame that has arrived.
    [[nodiscard]] int currentContactCount() const;
    [[nodiscard]] bool hasThreeContacts() const { return currentContactCount() == threeContacts; }

    [[nodiscard]] bool isStarted() const { return isStarted_; }

    /// Whether the last frame held exactly three contacts. Any thread.
    [[nodiscard]] bool hasLatched() const { return hasLatched_; }

    /// `handler` is called on the main thread, soon after contacts have become three or have ceased
    /// to be, with whether they are.
    void setThreeContactsHandler(std::function<void(bool)> handler) {
        handler_ = std::move(handler);
    }

  private:
    static constexpr int threeContacts = 3;

    static int contactFrame(TouchDevice device, void* contacts, std::int32_t count,
                            double timestamp, std::int32_t frame);
    void storeContacts(int count);
    void reportThreeContacts();

    RunLoop& runLoop_;
    DynamicLibraries& libraries_;

    std::unique_ptr<DynamicLibrary> libHandle_;
    CreateDefaultTouchDevice createDefault_ = nullptr;
    ChangeContactFrameCallback registerCallback_ = nullptr;
    ChangeContactFrameCallback unregisterCallback_ = nullptr;
    StartTouchDevice startDevice_ = nullptr;
    StopTouchDevice stopDevice_ = nullptr;

    TouchDevice device_ = nullptr;
    bool isStarted_ = false;
    std::atomic<bool> hasLatched_ = false;
    std::function<void(bool)> handler_;

    int currentContacts_ = 0;                 // on the queue only
    std::unique_ptr<SerialQueue> stateQueue_; // last: its work uses what stands above
};

} // namespace quillon
