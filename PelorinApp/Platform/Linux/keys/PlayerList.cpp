#include "Platform/Linux/keys/PlayerList.h"

#include <algorithm>
#include <tuple>

namespace quillon {

namespace {

template <class Value>
void replace(std::optional<Value>& value, const std::optional<Value>& news) {
    if (news) {
        value = news;
    }
}

bool isPlaying(const MediaPlayer& player) { return player.facts.status == PlaybackStatus::playing; }

bool can(const MediaPlayer& player, MediaCommand command) {
    const PlayerFacts& facts = player.facts;
    if (!facts.status || !facts.canControl.value_or(true)) {
        return false;
    }
    if (isPlaying(player)) {
        return true;
    }
    switch (command) {
    case MediaCommand::playPause:
        return facts.canPlay.value_or(true);
    case MediaCommand::next:
        return facts.canGoNext.value_or(true);
    case MediaCommand::previous:
        return facts.canGoPrevious.value_or(true);
    }
    return false;
}

auto rank(const MediaPlayer& player) {
    return std::tuple(isPlaying(player), player.lastUsed,
                      player.facts.status == PlaybackStatus::paused);
}

} // namespace

void PlayerList::add(std::string_view name, std::string_view owner) {
    remove(name);
    players_.push_back({.name = std::string(name), .owner = std::string(owner)});
}

void PlayerList::remove(std::string_view name) {
    std::erase_if(players_, [name](const MediaPlayer& player) { return player.name == name; });
}

MediaPlayer* PlayerList::find(std::string_view name) {
    const auto found = std::find_if(players_.begin(), players_.end(),
                                    [name](const auto& player) { return player.name == name; });
    return found == players_.end() ? nullptr : &*found;
}

void PlayerList::forOwner(std::string_view owner, const std::function<void(MediaPlayer&)>& use) {
    for (MediaPlayer& player : players_) {
        if (player.owner == owner) {
            use(player);
        }
    }
}

void PlayerList::update(MediaPlayer& player, const PlayerFacts& news) {
    PlayerFacts& facts = player.facts;
    if (news.status && news.status != facts.status &&
        (facts.status || isPlaying({.facts = news}))) {
        markUsed(player);
    }
    replace(facts.status, news.status);
    replace(facts.canControl, news.canControl);
    replace(facts.canPlay, news.canPlay);
    replace(facts.canGoNext, news.canGoNext);
    replace(facts.canGoPrevious, news.canGoPrevious);
}

MediaPlayer* PlayerList::target(MediaCommand command,
                                const std::function<bool(const MediaPlayer&)>& eligible) {
    MediaPlayer* best = nullptr;
    for (MediaPlayer& player : players_) {
        if (can(player, command) && eligible(player) && (!best || rank(player) > rank(*best))) {
            best = &player;
        }
    }
    return best;
}

} // namespace quillon
