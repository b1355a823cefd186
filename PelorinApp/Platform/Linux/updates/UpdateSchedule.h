#pragma once

#include "Platform/RunLoop.h"
#include "Platform/UserDefaults.h"

#include <functional>
#include <optional>

namespace quillon {

/// When the program looks for updates by itself: once a day.
///
/// The wall clock says when a day is over, as it goes on while the computer sleeps or the program
/// does not run. It may be set back and forth, so a check in the future does not count, and a day
/// of being awake is enough whatever it says. Setting it forth costs one check an hour at worst.
class UpdateSchedule {
  public:
    /// The wall-clock time at which the last check began, in seconds since 1970.
    static constexpr const char* lastCheckKey = "SULastCheckTime";

    /// Timers may come a twentieth early: these are the promised minute and hour with room for it.
    static constexpr double firstDelay = 90;
    static constexpr double interval = 3900;

    /// `check` begins a check and says whether it did. It may stop the schedule.
    UpdateSchedule(RunLoop& runLoop, UserDefaults& defaults, Diagnostics& diagnostics,
                   std::function<bool()> check);
    UpdateSchedule(const UpdateSchedule&) = delete;
    UpdateSchedule& operator=(const UpdateSchedule&) = delete;
    ~UpdateSchedule() { stop(); }

    /// Does nothing when it is running.
    void start();
    void stop();

  private:
    void tick();
    [[nodiscard]] bool isDue() const;
    [[nodiscard]] double wallTime() const;

    RunLoop& runLoop_;
    UserDefaults& defaults_;
    Diagnostics& diagnostics_;
    std::function<bool()> check_;
    TimerRef timer_;
    std::optional<double> lastUptime_; // of the last check of this run
};

} // namespace quillon
