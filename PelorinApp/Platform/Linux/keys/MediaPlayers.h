#pragma once

#include "Platform/Linux/keys/FolderWatch.h"
#include "Platform/Linux/keys/PlayerSession.h"
#include "Platform/Linux/session/WakeUp.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace quillon {

/// The players of the session, on a thread of their own: neither the bus nor a player can hold up
/// anything else. They are followed from the start, so that the first command knows which one was
/// paused last; nothing wakes the thread but what players say. A bus that goes is found again when
/// it comes back at the same place.
class MediaPlayers {
  public:
    using Done = PlayerSession::Done;

    /// `address` is that of the session's bus; empty when there is none.
    explicit MediaPlayers(const std::string& address);
    MediaPlayers(const MediaPlayers&) = delete;
    MediaPlayers& operator=(const MediaPlayers&) = delete;
    ~MediaPlayers() { stop(); }

    /// Any thread. `done` is called on the players' thread, or at once where there is no bus. It
    /// is told whether a player has got the command, so that nothing else is to be done.
    void command(MediaCommand command, Done done);

    /// Of the commands that are under way no more is heard.
    void stop();

  private:
    using Clock = PlayerSession::Clock;

    void run();
    void takeCommands();
    void connect();
    void dropLost();
    void waitForSomething();
    [[nodiscard]] int timeout() const; // as for poll(), in milliseconds

    const std::string address_;
    WakeUp wakeUp_;
    std::mutex mutex_;
    std::vector<std::pair<MediaCommand, Done>> commands_;
    std::atomic<bool> stops_ = false;

    // The thread's own
    std::unique_ptr<PlayerSession> session_;
    std::optional<FolderWatch> folder_; // of the bus's socket, while there is no bus
    std::optional<Clock::time_point> nextTry_;
    int triesLeft_ = 0;

    std::thread thread_;
};

} // namespace quillon
