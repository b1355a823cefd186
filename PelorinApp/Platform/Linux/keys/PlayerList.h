#pragma once

#include "Platform/Linux/keys/MediaPlayer.h"

#include <functional>
#include <string_view>
#include <vector>

namespace quillon {

/// The players of a session, and which of them a media key is meant for.
class PlayerList {
  public:
    /// A name that is there already passes to the new owner, as another player.
    void add(std::string_view name, std::string_view owner);
    void remove(std::string_view name);
    void clear() { players_.clear(); }

    /// Null when there is none.
    [[nodiscard]] MediaPlayer* find(std::string_view name);

    /// One connection may have several names, all for the same player. Calls `use` with each.
    void forOwner(std::string_view owner, const std::function<void(MediaPlayer&)>& use);

    [[nodiscard]] const std::vector<MediaPlayer>& all() const { return players_; }

    /// Takes over what is said. A player is used when its status changes, and when it plays already
    /// as we get to know it.
    void update(MediaPlayer& player, const PlayerFacts& news);

    /// The user has just commanded it.
    void markUsed(MediaPlayer& player) { player.lastUsed = ++uses_; }

    /// The one that plays. With several, or with none, the one that was used last; with none that
    /// was, one that is paused, and then the one that came first. One that plays gets every
    /// command; the others only those that they say they can carry out. Null when there is none
    /// among those that are `eligible`.
    [[nodiscard]] MediaPlayer* target(MediaCommand command,
                                      const std::function<bool(const MediaPlayer&)>& eligible);

  private:
    std::vector<MediaPlayer> players_; // in the order in which they came
    std::uint64_t uses_ = 0;
};

} // namespace quillon
