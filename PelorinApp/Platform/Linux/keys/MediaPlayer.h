#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quillon {

enum class MediaCommand : std::uint8_t { playPause, next, previous };

enum class PlaybackStatus : std::uint8_t { stopped, paused, playing };

/// What a player says of itself, or what has changed of it.
struct PlayerFacts {
    std::optional<PlaybackStatus> status;
    std::optional<bool> canControl;
    std::optional<bool> canPlay;
    std::optional<bool> canGoNext;
    std::optional<bool> canGoPrevious;
};

/// A program that plays, by the MPRIS protocol.
struct MediaPlayer {
    std::string name;           // on the bus
    std::string owner;          // the connection that has the name; empty as long as unknown
    PlayerFacts facts;          // without a status it has not said anything yet
    std::uint64_t lastUsed = 0; // greater is later; 0: not while we looked
};

} // namespace quillon
