#include "Platform/MacOS/MacRunLoop.h"

#include "Platform/MacOS/DispatchSerialQueue.h"
#include "Platform/MacOS/RepeatingTimer.h"
#include "Platform/MacOS/SystemUptime.h"

#include <dispatch/dispatch.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace quillon {

namespace {

/// Work that runs later, unless its handle has taken it away by then.
class LaterWork final : public Timer {
  public:
    explicit LaterWork(std::function<void()> work) : work_(std::move(work)) {}
    void cancel() override { work_ = nullptr; }
    void run() {
        if (const auto work = std::exchange(work_, nullptr)) {
            work();
        }
    }

  private:
    std::function<void()> work_;
};

void runWork(void* context) {
    const std::unique_ptr<Work> work(static_cast<Work*>(context));
    work->run();
}

void runLaterWork(void* context) {
    const std::unique_ptr<std::shared_ptr<LaterWork>> later(
        static_cast<std::shared_ptr<LaterWork>*>(context));
    (*later)->run();
}

std::int64_t nanoseconds(double seconds) {
    constexpr double longest = 1e9; // seconds; more would not fit
    return std::llround(std::clamp(seconds, 0.0, longest) * static_cast<double>(NSEC_PER_SEC));
}

} // namespace

void MacRunLoop::enqueueMain(std::unique_ptr<Work> work) {
    dispatch_async_f(dispatch_get_main_queue(), work.release(), runWork);
}

void MacRunLoop::enqueueBackground(std::unique_ptr<Work> work) {
    dispatch_async_f(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), work.release(),
                     runWork);
}

std::unique_ptr<SerialQueue> MacRunLoop::makeSerialQueue(std::string_view label) {
    return std::make_unique<DispatchSerialQueue>(label);
}

TimerRef MacRunLoop::asyncAfter(double seconds, std::function<void()> work) {
    auto later = std::make_shared<LaterWork>(std::move(work));
    dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, nanoseconds(seconds)),
                     dispatch_get_main_queue(), new std::shared_ptr<LaterWork>(later),
                     runLaterWork);
    return later;
}

TimerRef MacRunLoop::scheduleRepeating(double seconds, std::function<void()> work) {
    return scheduleRepeatingTimer(seconds, std::move(work));
}

std::chrono::system_clock::time_point MacRunLoop::now() const {
    return std::chrono::system_clock::now();
}

double MacRunLoop::uptime() const { return systemUptime(); }

} // namespace quillon
