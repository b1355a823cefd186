#pragma once

#include "Platform/MainQueue.h"
#include "Platform/RunLoop.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace quillon {

/// A run loop whose background work really runs beside the main thread. Timers fire when the test
/// says so, all that are scheduled.
class ThreadedRunLoop final : public RunLoop {
  public:
    ThreadedRunLoop() = default;
    ThreadedRunLoop(const ThreadedRunLoop&) = delete;
    ThreadedRunLoop& operator=(const ThreadedRunLoop&) = delete;
    ~ThreadedRunLoop() override { waitForBackground(); }

    TimerRef asyncAfter(double /*seconds*/, std::function<void()> work) override {
        auto timer = std::make_shared<OnceTimer>();
        timer->work = std::move(work);
        timers_.push_back(timer);
        return timer;
    }
    TimerRef scheduleRepeating(double seconds, std::function<void()> work) override {
        return asyncAfter(seconds, std::move(work)); // nothing here repeats
    }
    std::unique_ptr<SerialQueue> makeSerialQueue(std::string_view /*label*/) override {
        return nullptr; // nobody asks for one here
    }
    [[nodiscard]] std::chrono::system_clock::time_point now() const override { return {}; }
    [[nodiscard]] double uptime() const override { return 0; }

    void fireTimers() {
        for (const auto& timer : std::exchange(timers_, {})) {
            if (timer->work) {
                timer->work();
            }
        }
        main_.runQueued();
    }

    /// Waits until so many pieces of background work have run to their end, and says whether.
    [[nodiscard]] bool waitUntilFinished(int count, std::chrono::seconds patience) {
        std::unique_lock lock(mutex_);
        return ended_.wait_for(lock, patience, [&] { return finished_ >= count; });
    }

    void waitForBackground() {
        std::vector<std::thread> threads;
        {
            const std::scoped_lock lock(mutex_);
            threads.swap(threads_);
        }
        for (auto& thread : threads) {
            thread.join();
        }
    }

  protected:
    void enqueueMain(std::unique_ptr<Work> work) override { main_.push(std::move(work)); }
    void enqueueBackground(std::unique_ptr<Work> work) override {
        const std::scoped_lock lock(mutex_);
        threads_.emplace_back([this, held = std::move(work)] {
            held->run();
            const std::scoped_lock ended(mutex_);
            ++finished_;
            ended_.notify_all();
        });
    }

  private:
    struct OnceTimer final : Timer {
        void cancel() override { work = nullptr; }
        std::function<void()> work;
    };

    std::vector<std::shared_ptr<OnceTimer>> timers_;
    MainQueue main_;
    std::mutex mutex_;
    std::condition_variable ended_;
    int finished_ = 0;
    std::vector<std::thread> threads_;
};

} // namespace quillon
