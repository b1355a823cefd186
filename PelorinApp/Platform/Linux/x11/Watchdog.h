#pragma once

#include "Platform/Linux/watchdog/WatchdogMessage.h"
#include "Platform/Posix/files/FileDescriptor.h"

#include <chrono>
#include <filesystem>
#include <memory>

#include <sys/types.h>
#include <xcb/xproto.h>

namespace quillon {

/// The program's side of its watchdog: a process that gives the input back when this one falls
/// silent while it holds some. A stopped or hung program cannot do that by itself.
class Watchdog {
  public:
    using Clock = std::chrono::steady_clock;

    /// Starts the process and waits, for a second at most, until it is ready. `window` belongs to
    /// the connection that is to be closed in need. Null when there is no watchdog to be had.
    static std::unique_ptr<Watchdog> start(const std::filesystem::path& program,
                                           xcb_window_t window);
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// Ends it. Nothing may be held any more.
    ~Watchdog();

    /// Says how things are, if that is new or is to be said again. False when the watchdog is gone.
    bool tell(const WatchdogMessage& message);

    /// When tell() is due again; never while nothing is held.
    [[nodiscard]] Clock::time_point nextTell() const;

    /// Readable when the watchdog has ended.
    [[nodiscard]] int descriptor() const { return socket_.get(); }

  private:
    Watchdog(pid_t process, FileDescriptor socket)
        : process_(process), socket_(std::move(socket)) {}
    [[nodiscard]] bool awaitReady() const;

    pid_t process_;
    FileDescriptor socket_;
    WatchdogMessage said_;
    Clock::time_point saidAt_;
};

} // namespace quillon
