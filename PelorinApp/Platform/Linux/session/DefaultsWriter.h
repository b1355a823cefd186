#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Linux/session/DefaultsFile.h"
#include "Platform/RunLoop.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Brings the changes of a store to its file, away from the main thread: making a file durable can
/// take long, and the main thread answers input events. Changes that follow closely share a write,
/// and a write that failed is tried again.
///
/// The work holds this object, so that what is on its way arrives also when the store is gone.
class DefaultsWriter : public std::enable_shared_from_this<DefaultsWriter> {
  public:
    DefaultsWriter(DefaultsFile file, RunLoop& runLoop, Diagnostics& diagnostics);

    /// Main thread. Nothing for an object removes the key.
    void change(std::string_view key, std::optional<DefaultsObject> object);

    /// Main thread. Writes at once, on a thread of its own, as the run loop may not be running.
    void beginFlush();

    /// Main thread. Whether everything was on the disk by the deadline.
    [[nodiscard]] bool finishFlush(std::chrono::steady_clock::time_point deadline);

    /// Main thread. The store goes away, and after it the platform may.
    void detach();

  private:
    struct Change {
        std::optional<DefaultsObject> object;
        std::uint64_t age = 0;
    };

    void schedule();
    void writeInBackground();
    void write();
    void writeOnce(std::unique_lock<std::mutex>& lock);
    void report(std::string_view line);
    void reportResult(const DefaultsFile::Updated& updated);
    void scheduleRetry();
    void cancelRetry();

    DefaultsFile file_;    // of whoever has set writing_
    bool failing_ = false; // likewise

    std::mutex mutex_;
    std::condition_variable idle_;
    std::map<std::string, Change, std::less<>> changes_;
    std::uint64_t changesMade_ = 0;
    bool writing_ = false;
    bool writeAgain_ = false;
    int flushThreads_ = 0;

    std::mutex platformMutex_;
    bool platformIsGone_ = false;
    RunLoop& runLoop_;
    Diagnostics& diagnostics_;

    // Of the main thread.
    bool scheduled_ = false;
    TimerRef retry_;
    double retryDelay_;
};

} // namespace quillon
