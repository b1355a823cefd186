#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <dbus/dbus.h>

namespace quillon {

/// A program on a bus that plays, or says so, as long as this object lives.
class FakePlayer {
  public:
    struct Abilities {
        bool control = true;
        bool play = true;
        bool next = true;
        bool previous = true;
    };

    /// `name` is the end of its name on the bus. Returns when it has that.
    FakePlayer(const std::string& address, const std::string& name, const std::string& status)
        : FakePlayer(address, name, status, Abilities{}) {}
    FakePlayer(const std::string& address, const std::string& name, const std::string& status,
               Abilities abilities);
    FakePlayer(const FakePlayer&) = delete;
    FakePlayer& operator=(const FakePlayer&) = delete;
    ~FakePlayer();

    /// One more name for the same player.
    void alsoNamed(const std::string& name);

    /// What it has been told to do, such as "PlayPause".
    [[nodiscard]] std::vector<std::string> commands();

    /// How often it was asked how it does.
    [[nodiscard]] int questions() const { return questions_; }

    /// And says so on the bus, unless `quietly`.
    void setStatus(const std::string& status, bool quietly = false);

    /// Answers nothing from the return of this on until it is told to go on; what it has not heard
    /// yet waits.
    void hang() { setHanging(true); }
    void goOn() { setHanging(false); }

    /// Hangs from the next command on, which it hears.
    void hangAtCommand() { hangsAtCommand_ = true; }

    /// Knows no commands, only that it plays.
    void refuseCommands() { refuses_ = true; }

  private:
    static DBusHandlerResult filter(DBusConnection* connection, DBusMessage* message, void* player);
    void run();
    void setHanging(bool hangs);
    void answer(DBusMessage* message);
    void appendFacts(DBusMessageIter& dictionary);

    DBusConnection* connection_;
    Abilities abilities_;
    std::mutex mutex_;
    std::string status_;
    std::vector<std::string> commands_;
    std::atomic<int> questions_ = 0;
    std::condition_variable changed_;
    std::atomic<bool> hangs_ = false;
    bool isAtWork_ = true;
    std::atomic<bool> hangsAtCommand_ = false;
    std::atomic<bool> refuses_ = false;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

} // namespace quillon
