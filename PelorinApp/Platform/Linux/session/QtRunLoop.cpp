#include "Platform/Linux/session/QtRunLoop.h"

#include "Platform/Linux/session/EndSignals.h"
#include "Platform/Linux/session/ThreadQueue.h"

#include <QCoreApplication>
#include <QObject>
#include <QRunnable>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <sys/signalfd.h>
#include <unistd.h>

namespace quillon {

namespace {

class BackgroundWork final : public QRunnable {
  public:
    explicit BackgroundWork(std::unique_ptr<Work> work) : work_(std::move(work)) {}
    void run() override { work_->run(); }

  private:
    std::unique_ptr<Work> work_;
};

/// The signals that ask the program to end, as a descriptor instead of an interruption.
int takeSignals() {
    const sigset_t signals = blockEndSignals();
    return signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
}

/// Repeating timers from a second on may be off by a twentieth, either way, which lets the kernel
/// wake the processor once for several of them. What is to happen once must not be early.
Qt::TimerType timerType(double seconds, bool repeats) {
    return repeats && seconds >= 1.0 ? Qt::CoarseTimer : Qt::PreciseTimer;
}

std::chrono::milliseconds timerInterval(double seconds, bool repeats) {
    constexpr double inexactness = 1e-6; // of a number of milliseconds that was meant to be whole
    const double milliseconds = seconds * 1000;
    return std::chrono::milliseconds(
        std::llround(repeats ? milliseconds : std::ceil(milliseconds - inexactness)));
}

} // namespace

/// All timers of the loop hang on one object. Qt hands the ids of ended timers out again, so the
/// handles use numbers of our own.
class QtRunLoop::Timers final : public QObject {
  public:
    using Number = std::uint64_t;

    Number start(double seconds, bool repeats, std::function<void()> work) {
        const int id = startTimer(timerInterval(seconds, repeats), timerType(seconds, repeats));
        auto callback = std::make_shared<std::function<void()>>(std::move(work));
        scheduled_.push_back({++started_, id, repeats, std::move(callback)});
        return started_;
    }

    void cancel(Number number) {
        const auto found = std::find_if(scheduled_.begin(), scheduled_.end(),
                                        [&](const auto& one) { return one.number == number; });
        if (found != scheduled_.end()) {
            killTimer(found->id);
            scheduled_.erase(found);
        }
    }

  protected:
    void timerEvent(QTimerEvent* event) override {
        const auto found = std::find_if(scheduled_.begin(), scheduled_.end(), [&](const auto& one) {
            return one.id == event->timerId();
        });
        if (found == scheduled_.end()) {
            return;
        }
        const auto work = found->work; // outlives a cancel from within
        if (!found->repeats) {
            cancel(found->number);
        }
        (*work)();
    }

  private:
    struct Scheduled {
        Number number;
        int id;
        bool repeats;
        std::shared_ptr<std::function<void()>> work;
    };
    std::vector<Scheduled> scheduled_; // a handful
    Number started_ = 0;
};

namespace {

template <class Timers>
class TimerHandle final : public Timer {
  public:
    TimerHandle(std::weak_ptr<Timers> timers, typename Timers::Number number)
        : timers_(std::move(timers)), number_(number) {}
    void cancel() override {
        if (const auto timers = timers_.lock()) {
            timers->cancel(number_);
        }
    }

  private:
    std::weak_ptr<Timers> timers_;
    typename Timers::Number number_;
};

} // namespace

QtRunLoop::QtRunLoop()
    : signals_(takeSignals()), signalNotifier_(signals_, QSocketNotifier::Read),
      mainNotifier_(mainQueued_.descriptor(), QSocketNotifier::Read),
      timers_(std::make_shared<Timers>()) {
    QObject::connect(&mainNotifier_, &QSocketNotifier::activated, &mainNotifier_, [this] {
        mainQueued_.clear();
        main_.runQueued();
    });
    // One after the other: what two quick gestures bring about must not change places.
    background_.setMaxThreadCount(1);
    QObject::connect(&signalNotifier_, &QSocketNotifier::activated, &signalNotifier_, [this] {
        signalfd_siginfo signal{};
        [[maybe_unused]] const auto got = read(signals_, &signal, sizeof signal);
        quit(0);
    });
}

QtRunLoop::~QtRunLoop() {
    finishBackground();
    close(signals_);
}

void QtRunLoop::finishBackground() {
    background_.clear();
    background_.waitForDone();
}

TimerRef QtRunLoop::asyncAfter(double seconds, std::function<void()> work) {
    const auto number = timers_->start(seconds, false, std::move(work));
    return std::make_shared<TimerHandle<Timers>>(timers_, number);
}

TimerRef QtRunLoop::scheduleRepeating(double seconds, std::function<void()> work) {
    const auto number = timers_->start(seconds, true, std::move(work));
    return std::make_shared<TimerHandle<Timers>>(timers_, number);
}

std::unique_ptr<SerialQueue> QtRunLoop::makeSerialQueue(std::string_view label) {
    return std::make_unique<ThreadQueue>(label);
}

std::chrono::system_clock::time_point QtRunLoop::now() const {
    return std::chrono::system_clock::now();
}

double QtRunLoop::uptime() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void QtRunLoop::enqueueMain(std::unique_ptr<Work> work) {
    if (main_.push(std::move(work))) {
        mainQueued_.wake();
    }
}

void QtRunLoop::enqueueBackground(std::unique_ptr<Work> work) {
    background_.start(new BackgroundWork(std::move(work)));
}

int QtRunLoop::run() { return QCoreApplication::exec(); }

void QtRunLoop::quit(int status) { QCoreApplication::exit(status); }

} // namespace quillon
