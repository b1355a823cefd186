#pragma once

#include "Platform/Linux/keys/MediaPlayer.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct DBusMessage;

namespace quillon {

struct MessageRelease {
    void operator()(DBusMessage* message) const;
};
using OwnedMessage = std::unique_ptr<DBusMessage, MessageRelease>;

/// What is said on the bus to follow players and to command them. No call starts a program.
namespace players {

/// The first message of every connection.
[[nodiscard]] OwnedMessage hello();

/// Asks for signals of players that come, go or change, and of nothing else.
[[nodiscard]] std::vector<OwnedMessage> subscriptions();

[[nodiscard]] OwnedMessage listNames();
[[nodiscard]] OwnedMessage askFacts(const std::string& player);
[[nodiscard]] OwnedMessage command(const std::string& player, MediaCommand command);

/// Whether it is the name of a player. Not that of the known relay, which passes commands on to
/// players that are on the bus themselves.
[[nodiscard]] bool isPlayer(std::string_view name);

/// The answer to listNames(): the players among them, sorted.
[[nodiscard]] std::vector<std::string> namesIn(DBusMessage& reply);

/// The answer to askFacts().
[[nodiscard]] PlayerFacts factsIn(DBusMessage& reply);

/// The signal of a player that has changed.
struct Change {
    std::string owner;
    PlayerFacts facts;
    bool isIncomplete = false; // some of it is to be asked for
};
[[nodiscard]] std::optional<Change> changeIn(DBusMessage& message);

/// The signal of a player's name that passes on; no owner: the player is gone.
struct Passing {
    std::string name;
    std::string owner;
};
[[nodiscard]] std::optional<Passing> passingIn(DBusMessage& message);

/// Whether the connection is lost by this message.
[[nodiscard]] bool isDisconnected(DBusMessage& message);

/// Whether this is the answer to a call that the player cannot have heard or understood.
[[nodiscard]] bool wasNotHeard(DBusMessage& reply);

} // namespace players

} // namespace quillon
