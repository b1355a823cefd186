#pragma once

#include "Platform/RunLoop.h"

#include <cstddef>
#include <mutex>

namespace quillon {

/// A first-in, first-out list of work, linked through the pieces themselves. Any thread.
class MainQueue {
  public:
    MainQueue() = default;
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;
    ~MainQueue();

    /// True when the queue was empty: somebody has to be woken.
    bool push(std::unique_ptr<Work> work);

    /// The oldest piece, or null.
    std::unique_ptr<Work> pop();

    /// Runs what is queued at the moment of the call, not what that queues in turn, so that work
    /// which queues itself again cannot starve the run loop. Says how many pieces ran.
    std::size_t runQueued();

  private:
    static std::unique_ptr<Work> popFrom(std::unique_ptr<Work>& head);

    std::mutex mutex_;
    std::unique_ptr<Work> head_;
    Work* tail_ = nullptr;
};

} // namespace quillon
