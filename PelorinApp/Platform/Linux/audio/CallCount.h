#pragma once

#include <condition_variable>
#include <mutex>

namespace quillon {

/// How many calls of an object are under way, for who must not go while there are any.
class CallCount {
  public:
    class Call {
      public:
        explicit Call(CallCount& count) : count_(count) { count_.add(1); }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call() { count_.add(-1); }

      private:
        CallCount& count_;
    };

    void awaitNone() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return count_ == 0; });
    }

  private:
    void add(int change) {
        const std::scoped_lock lock(mutex_);
        count_ += change;
        changed_.notify_all(); // under the lock: the waiting thread owns the condition
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    int count_ = 0;
};

} // namespace quillon
