#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

namespace quillon {

/// How many questions nobody waits for any more and that are still to be answered.
class OverdueReplies {
  public:
    [[nodiscard]] bool areThere() const {
        const std::scoped_lock lock(mutex_);
        return count_ > 0;
    }
    void add(int change) {
        const std::scoped_lock lock(mutex_);
        count_ += change;
    }

  private:
    mutable std::mutex mutex_;
    int count_ = 0;
};

/// What one thread waits for and another one gives, once.
template <class T>
class Reply {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// `overdue` outlives the reply.
    explicit Reply(OverdueReplies& overdue) : overdue_(overdue) {}

    void give(std::optional<T> value) {
        {
            const std::scoped_lock lock(mutex_);
            if (std::exchange(isOverdue_, false)) {
                overdue_.add(-1);
            }
            value_ = std::move(value);
            isGiven_ = true;
        }
        given_.notify_all();
    }

    /// Nothing, too, when it has not been given in time.
    [[nodiscard]] std::optional<T> await(Time deadline) {
        std::unique_lock lock(mutex_);
        if (!given_.wait_until(lock, deadline, [this] { return isGiven_; })) {
            isOverdue_ = true;
            overdue_.add(1);
            return std::nullopt;
        }
        return std::move(value_);
    }

    [[nodiscard]] bool isOverdue() const {
        const std::scoped_lock lock(mutex_);
        return isOverdue_;
    }

  private:
    OverdueReplies& overdue_;
    mutable std::mutex mutex_;
    std::condition_variable given_;
    std::optional<T> value_;
    bool isGiven_ = false;
    bool isOverdue_ = false;
};

} // namespace quillon
