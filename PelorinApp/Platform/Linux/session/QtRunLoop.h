#pragma once

#include "Platform/Linux/session/WakeUp.h"
#include "Platform/MainQueue.h"
#include "Platform/RunLoop.h"

#include <QSocketNotifier>
#include <QThreadPool>

#include <memory>

namespace quillon {

/// The run loop of the process, on Qt's event loop. A QCoreApplication must exist first; threads
/// may be started only afterwards, since they inherit which signals are left to this loop.
class QtRunLoop final : public RunLoop {
  public:
    QtRunLoop();
    ~QtRunLoop() override;

    TimerRef asyncAfter(double seconds, std::function<void()> work) override;
    TimerRef scheduleRepeating(double seconds, std::function<void()> work) override;
    std::unique_ptr<SerialQueue> makeSerialQueue(std::string_view label) override;
    [[nodiscard]] std::chrono::system_clock::time_point now() const override;
    [[nodiscard]] double uptime() const override;

    /// Runs until quit() and answers its status. SIGINT, SIGTERM and SIGHUP end it with 0.
    int run();
    void quit(int status);

    /// Drops background work that has not begun and waits for the rest. To be called before what
    /// that work uses is destroyed.
    void finishBackground();

  protected:
    void enqueueMain(std::unique_ptr<Work> work) override;
    void enqueueBackground(std::unique_ptr<Work> work) override;

  private:
    class Timers;

    int signals_;
    QSocketNotifier signalNotifier_;
    MainQueue main_;
    WakeUp mainQueued_;
    QSocketNotifier mainNotifier_;
    std::shared_ptr<Timers> timers_;
    QThreadPool background_;
};

} // namespace quillon
