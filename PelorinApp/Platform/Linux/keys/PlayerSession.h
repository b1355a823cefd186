#pragma once

#include "Platform/Linux/keys/BusLink.h"
#include "Platform/Linux/keys/PlayerList.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Follows the players of one bus as long as that lives, and commands them, one command at a time.
/// Never waits; one thread only.
///
/// A player is asked how it does before it is commanded: one that hangs would carry out the command
/// at some later time, when another player has got it as well. Once a command has been sent, no
/// other player gets it, whatever becomes of it.
class PlayerSession {
  public:
    using Clock = std::chrono::steady_clock;
    /// Whether a player has got the command.
    using Done = std::function<void(bool)>;

    /// How long a player or the bus may take to answer. Longer than a busy program needs, shorter
    /// than it takes a person to press again.
    static constexpr std::chrono::milliseconds patience{500};

    /// Null when nobody listens at the address.
    static std::unique_ptr<PlayerSession> open(const std::string& address);
    PlayerSession(const PlayerSession&) = delete;
    PlayerSession& operator=(const PlayerSession&) = delete;
    ~PlayerSession();

    void command(MediaCommand command, Done done);

    [[nodiscard]] BusLink& link() { return *link_; }
    [[nodiscard]] bool isLost() const { return isLost_; }

    /// Whether the bus has let us in.
    [[nodiscard]] bool wasGreeted() const { return isGreeted_; }

    /// When expire() is to be called; nothing while nobody is waited for.
    [[nodiscard]] std::optional<Clock::time_point> deadline() const;
    void expire() { proceed(); }

  private:
    PlayerSession() = default;

    struct Question {
        std::string player;
        Clock::time_point until;
        std::uint32_t serial = 0;
        bool isOverdue = false;
    };
    struct Order {
        MediaCommand command;
        Done done;
        Clock::time_point until;               // the bus, or the player that has got it
        std::uint32_t sent = 0;                // the serial of the command; 0: not yet
        std::vector<std::string> known;        // players that have said how they do
        std::vector<std::string> passedOver{}; // and their connections
    };

    void start();
    void receive(DBusMessage& message);
    void receiveReply(DBusMessage& reply, std::uint32_t serial);
    void receiveFacts(DBusMessage& reply, const std::string& name);
    void receiveOutcome(DBusMessage& reply);
    void follow(const std::string& player, const std::string& owner);
    void forget(const std::string& player);
    /// Unless it is asked already. False when that cannot be.
    [[nodiscard]] bool ask(const std::string& player);
    void begin();
    void proceed();
    [[nodiscard]] bool advance();
    void finish(bool isTaken);
    [[nodiscard]] bool mayStillAnswer(std::string_view player) const;

    PlayerList players_;
    std::vector<Question> questions_; // at most one to each player
    std::deque<Order> orders_;
    std::string commanded_; // the player that has the first order
    std::uint32_t greeting_ = 0;
    std::uint32_t listing_ = 0;
    bool isGreeted_ = false;
    bool isListed_ = false; // since the first order has begun
    bool isLost_ = false;
    std::unique_ptr<BusLink> link_;
};

} // namespace quillon
