#include "Platform/Simulated/VirtualRunLoop.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillon {

namespace {
constexpr double microsecondsPerSecond = 1e6;

VirtualRunLoop::Microseconds toMicroseconds(double seconds) {
    return std::llround(seconds * microsecondsPerSecond);
}
} // namespace

class VirtualRunLoop::VirtualTimer final : public Timer {
  public:
    VirtualTimer(VirtualRunLoop& loop, Due first, Microseconds every,
                 std::function<void()> callback)
        : due(first), interval(every), work(std::move(callback)), loop_(loop) {}

    void cancel() override { loop_.timers_.erase(due); }

    Due due;
    Microseconds interval; // 0: fires once
    std::function<void()> work;

  private:
    VirtualRunLoop& loop_;
};

class VirtualRunLoop::VirtualSerialQueue final : public SerialQueue {
  public:
    explicit VirtualSerialQueue(std::shared_ptr<MainQueue> queue) : queue_(std::move(queue)) {}

    void sync(const std::function<void()>& work) override {
        while (queue_->runQueued() > 0) {
        }
        work();
    }

  protected:
    void enqueue(std::unique_ptr<Work> work) override { queue_->push(std::move(work)); }

  private:
    std::shared_ptr<MainQueue> queue_;
};

std::unique_ptr<SerialQueue> VirtualRunLoop::makeSerialQueue(std::string_view label) {
    queueLabels_.emplace_back(label);
    auto queue = std::make_shared<MainQueue>();
    std::erase_if(serial_, [](const auto& old) { return old.expired(); });
    serial_.push_back(queue);
    return std::make_unique<VirtualSerialQueue>(std::move(queue));
}

TimerRef VirtualRunLoop::schedule(double seconds, bool repeats, std::function<void()> work) {
    const Microseconds interval = toMicroseconds(seconds);
    const Due due{time_ + interval, timersMade_++};
    auto timer =
        std::make_shared<VirtualTimer>(*this, due, repeats ? interval : 0, std::move(work));
    timers_.emplace(due, timer);
    return timer;
}

TimerRef VirtualRunLoop::asyncAfter(double seconds, std::function<void()> work) {
    return schedule(seconds, false, std::move(work));
}

TimerRef VirtualRunLoop::scheduleRepeating(double seconds, std::function<void()> work) {
    return schedule(seconds, true, std::move(work));
}

std::chrono::system_clock::time_point VirtualRunLoop::now() const {
    return std::chrono::system_clock::time_point(std::chrono::microseconds(time_ + clockOffset_));
}

void VirtualRunLoop::stepClock(double seconds) { clockOffset_ += toMicroseconds(seconds); }

double VirtualRunLoop::uptime() const { return static_cast<double>(time_) / microsecondsPerSecond; }

void VirtualRunLoop::drain() {
    while (main_.runQueued() > 0 || background_.runQueued() > 0 || runSerial()) {
    }
}

bool VirtualRunLoop::runSerial() {
    const auto queues = serial_; // work may make another
    return std::any_of(queues.begin(), queues.end(), [](const auto& weak) {
        const auto queue = weak.lock();
        return queue && queue->runQueued() > 0;
    });
}

void VirtualRunLoop::discardQueued() {
    while (main_.pop() || background_.pop()) {
    }
}

void VirtualRunLoop::fireNext() {
    const auto first = timers_.begin();
    const std::shared_ptr<VirtualTimer> timer = first->second;
    time_ = timer->due.at;
    timers_.erase(first);
    if (timer->interval > 0) {
        timer->due.at += timer->interval;
        timers_.emplace(timer->due, timer);
    }
    timer->work();
}

void VirtualRunLoop::advanceTo(Microseconds time) {
    while (!timers_.empty() && timers_.begin()->first.at <= time) {
        fireNext();
        drain();
    }
    time_ = std::max(time_, time);
}

void VirtualRunLoop::advance(double seconds) { advanceTo(time_ + toMicroseconds(seconds)); }

void VirtualRunLoop::enqueueMain(std::unique_ptr<Work> work) { main_.push(std::move(work)); }

void VirtualRunLoop::enqueueBackground(std::unique_ptr<Work> work) {
    background_.push(std::move(work));
}

} // namespace quillon
