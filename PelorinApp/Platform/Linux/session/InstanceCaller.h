#pragma once

#include <map>
#include <memory>
#include <string>

struct DBusConnection;
struct DBusMessage;

namespace quillon {

/// Calls the instance of the program that runs in this session, over a connection of its own, and
/// waits for the answer, up to five seconds.
///
/// Not by the toolkit: its bus needs an application object, and a thread that is still at work
/// while a process that has asked its one question comes to its end.
///
/// settleSessionBus() must have been called.
class InstanceCaller {
  public:
    InstanceCaller();

    enum class Outcome { done, notRunning, noAnswer, refused };
    struct Answer {
        Outcome outcome = Outcome::done;
        std::string error; // why it was refused, for the user
    };

    /// Brings the instance up. What is not UTF-8 is left out.
    [[nodiscard]] Answer activate(const std::map<std::string, std::string>& platformData);

    [[nodiscard]] Answer showVolumeLevel(double percent);

  private:
    struct Close {
        void operator()(DBusConnection* connection) const;
    };

    [[nodiscard]] Answer call(DBusMessage* message);

    std::unique_ptr<DBusConnection, Close> connection_; // null: there is no bus
};

} // namespace quillon
