#pragma once

#include "Platform/Linux/session/WakeUp.h"

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include <pulse/mainloop.h>

namespace quillon {

/// A thread that runs a main loop of the sound library, and sleeps while there is nothing to do.
///
/// Not the library's own threaded loop: that one gives its lock away only for as long as it
/// pleases, and has no wait with a limit. Here nobody but this thread uses the library, and others
/// leave word.
class PulseLoop {
  public:
    PulseLoop();
    PulseLoop(const PulseLoop&) = delete;
    PulseLoop& operator=(const PulseLoop&) = delete;

    /// stop() must have been called.
    ~PulseLoop() = default;

    /// Runs the work on the thread, after what has been posted before. False after stop(). Any
    /// thread.
    bool post(std::function<void()> work);

    /// Runs what has been posted, and waits for the thread to end.
    void stop();

    [[nodiscard]] pa_mainloop_api& api() const { return *pa_mainloop_get_api(loop_.get()); }

  private:
    void run();
    void runPosted();

    struct Free {
        void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
    };

    std::unique_ptr<pa_mainloop, Free> loop_;
    WakeUp wakeUp_;
    std::mutex mutex_;
    std::vector<std::function<void()>> posted_;
    bool stops_ = false;
    std::thread thread_;
};

} // namespace quillon
