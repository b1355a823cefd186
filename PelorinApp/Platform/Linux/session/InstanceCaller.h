#pragma once

#include "Platform/Linux/session/ToolVerb.h"

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
        std::string text; // what was asked for, or why it was refused, for the user
    };

    /// Brings the instance up, with what the environment tells of the click or key press that the
    /// user did it by.
    [[nodiscard]] Answer activate();

    [[nodiscard]] Answer showVolumeLevel(double percent);

    /// Its state and that of its tools, as JSON.
    [[nodiscard]] Answer toolStatus();

    /// Waits for the end of an install as long as the instance answers other questions meanwhile.
    [[nodiscard]] Answer performOnTool(ToolVerb verb, const std::string& id);

    /// Ends the instance, and waits until its name has gone from the bus.
    [[nodiscard]] Answer quit();

  private:
    struct Close {
        void operator()(DBusConnection* connection) const;
    };

    [[nodiscard]] Answer call(DBusMessage* message);
    [[nodiscard]] Answer callAndAwait(DBusMessage* message);
    [[nodiscard]] bool hasOwner();

    std::unique_ptr<DBusConnection, Close> connection_; // null: there is no bus
};

} // namespace quillon
