#pragma once

#include "Platform/Linux/http/UrlTransfers.h"
#include "Platform/Linux/session/WakeUp.h"
#include "Platform/RunLoop.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace quillon {

/// The thread of a session, which is there only while something is under way. Held by the session,
/// by its tasks and by the thread itself, so none of them needs to wait for another.
class UrlExchangeThread final : public std::enable_shared_from_this<UrlExchangeThread> {
  public:
    UrlExchangeThread(RunLoop& runLoop, UrlSettings settings);
    UrlExchangeThread(const UrlExchangeThread&) = delete;
    UrlExchangeThread& operator=(const UrlExchangeThread&) = delete;
    ~UrlExchangeThread() = default;

    /// Main thread.
    void begin(std::shared_ptr<UrlOrder> order);

    /// Main thread, also after end(). Never waits.
    void cancel(UrlOrder& order);

    /// Main thread, once. Gives up everything; no completion is called any more, and the run loop
    /// is not used from here.
    void end();

  private:
    class NoSignals;

    void start();
    void run();
    [[nodiscard]] bool hasOrders();
    [[nodiscard]] bool takeOrders(UrlTransfers& transfers);
    void report(const std::shared_ptr<UrlOrder>& order, UrlResult result);
    void complete(const std::shared_ptr<UrlOrder>& order, UrlResult result); // under the lock

    const UrlSettings settings_;
    WakeUp wake_;
    std::thread thread_; // main thread only

    std::mutex mutex_;                              // guards what follows; held for moments only
    RunLoop* runLoop_;                              // null after the end
    std::vector<std::shared_ptr<UrlOrder>> orders_; // to be begun
    bool isRunning_ = false;
    std::condition_variable stopped_;
};

} // namespace quillon
