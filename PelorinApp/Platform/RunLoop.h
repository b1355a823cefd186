#pragma once

#include "Platform/EventServices.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

namespace quillon {

/// One piece of queued work. Queues link the pieces themselves, so that a hand-off is exactly one
/// allocation.
class Work {
  public:
    Work() = default;
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    virtual ~Work() = default;
    virtual void run() = 0;

    std::unique_ptr<Work> next;
};

template <class Callable>
class WorkOf final : public Work {
  public:
    explicit WorkOf(Callable callable) : callable_(std::move(callable)) {}
    void run() override { callable_(); }

  private:
    Callable callable_;
};

/// A scheduled timer or work item. Releasing the handle does not stop it; cancel() does, also from
/// within its own callback.
class Timer {
  public:
    virtual ~Timer() = default;
    virtual void cancel() = 0;
};
using TimerRef = std::shared_ptr<Timer>;

/// Runs work in order, one piece at a time, on a thread that is not the main one. Any thread may
/// queue.
class SerialQueue {
  public:
    virtual ~SerialQueue() = default;

    template <class Callable>
    void async(Callable callable) {
        enqueue(std::make_unique<WorkOf<Callable>>(std::move(callable)));
    }

    /// Runs `work` once what was queued before has run, and returns when it has. Not to be called
    /// from the queue itself.
    virtual void sync(const std::function<void()>& work) = 0;

  protected:
    virtual void enqueue(std::unique_ptr<Work> work) = 0;
};

/// The main thread's queue and timers, a background queue, and the only source of time.
///
/// Every callback runs on the main thread but for asyncBackground's. Times are in seconds.
class RunLoop {
  public:
    virtual ~RunLoop() = default;

    /// Queues work on the main thread, behind what is queued already. Any thread.
    template <class Callable>
    void async(Callable callable) {
        enqueueMain(std::make_unique<WorkOf<Callable>>(std::move(callable)));
    }

    /// Queues work that may block, on a thread that is not the main one. Pieces are begun in
    /// order; where the system's own queue is a concurrent one they may overlap. Any thread.
    template <class Callable>
    void asyncBackground(Callable callable) {
        enqueueBackground(std::make_unique<WorkOf<Callable>>(std::move(callable)));
    }

    /// A queue of its own. Work that has not begun when the queue is destroyed is dropped. `label`
    /// is for people who look at the process.
    virtual std::unique_ptr<SerialQueue> makeSerialQueue(std::string_view label) = 0;

    /// Main thread. Runs the work once, no earlier than `seconds` from now.
    virtual TimerRef asyncAfter(double seconds, std::function<void()> work) = 0;

    /// Main thread. Runs the work every `seconds`, first after one such interval.
    virtual TimerRef scheduleRepeating(double seconds, std::function<void()> work) = 0;

    /// Main thread.
    void addSource(const RunLoopSourceRef& source) { source->attach(); }
    void removeSource(const RunLoopSourceRef& source) { source->detach(); }

    /// The wall clock, which people and time servers may set back and forth.
    [[nodiscard]] virtual std::chrono::system_clock::time_point now() const = 0;

    /// Seconds since some fixed moment; never goes back.
    [[nodiscard]] virtual double uptime() const = 0;

  protected:
    virtual void enqueueMain(std::unique_ptr<Work> work) = 0;
    virtual void enqueueBackground(std::unique_ptr<Work> work) = 0;
};

} // namespace quillon
