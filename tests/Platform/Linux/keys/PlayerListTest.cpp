#include "Platform/Linux/keys/PlayerList.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

bool everyone(const MediaPlayer&) { return true; }

struct PlayerListTest : testing::Test {
    PlayerList list;

    MediaPlayer& add(const char* name, PlaybackStatus status) {
        list.add(name, std::string(":") + name);
        set(name, status);
        return *list.find(name);
    }
    void set(const char* name, PlaybackStatus status) {
        list.update(*list.find(name), {.status = status});
    }
    std::string target(MediaCommand command = MediaCommand::playPause) {
        const MediaPlayer* player = list.target(command, everyone);
        return player == nullptr ? "none" : player->name;
    }
};

TEST_F(PlayerListTest, TheOneThatPlays) {
    add("a", PlaybackStatus::paused);
    add("b", PlaybackStatus::playing);
    add("c", PlaybackStatus::stopped);
    set("c", PlaybackStatus::paused); // used later
    EXPECT_EQ(target(), "b");
}

TEST_F(PlayerListTest, OfSeveralThatPlayTheOneThatBeganLast) {
    add("a", PlaybackStatus::paused);
    add("b", PlaybackStatus::playing);
    set("a", PlaybackStatus::playing);
    EXPECT_EQ(target(), "a");
}

TEST_F(PlayerListTest, TheOneThatWasPausedLast) {
    add("a", PlaybackStatus::playing);
    add("b", PlaybackStatus::playing);
    set("a", PlaybackStatus::paused);
    set("b", PlaybackStatus::paused);
    set("b", PlaybackStatus::paused); // says it again
    EXPECT_EQ(target(), "b");
    set("a", PlaybackStatus::stopped);
    EXPECT_EQ(target(), "a");
}

TEST_F(PlayerListTest, TheOneThatWasCommandedLast) {
    add("a", PlaybackStatus::paused);
    add("b", PlaybackStatus::playing);
    list.remove("b");
    add("c", PlaybackStatus::paused);
    EXPECT_EQ(target(), "a");
    list.markUsed(*list.find("c"));
    EXPECT_EQ(target(), "c");
    list.markUsed(*list.find("a"));
    EXPECT_EQ(target(), "a");
}

TEST_F(PlayerListTest, WithoutAnyUseTheFirstPausedOne) {
    add("a", PlaybackStatus::stopped);
    add("b", PlaybackStatus::paused);
    add("c", PlaybackStatus::paused);
    EXPECT_EQ(target(), "b");
}

TEST_F(PlayerListTest, OnlyTheOnesThatCan) {
    list.update(add("a", PlaybackStatus::paused), {.canPlay = false, .canGoNext = false});
    list.update(add("b", PlaybackStatus::paused), {.canControl = false});
    list.update(add("c", PlaybackStatus::stopped), {.canGoPrevious = false});
    EXPECT_EQ(target(MediaCommand::playPause), "c");
    EXPECT_EQ(target(MediaCommand::next), "c");
    EXPECT_EQ(target(MediaCommand::previous), "a");
}

TEST_F(PlayerListTest, OneThatPlaysGetsItWhateverItSaysOfIt) {
    list.update(add("a", PlaybackStatus::playing), {.canPlay = false, .canGoNext = false});
    add("b", PlaybackStatus::paused);
    EXPECT_EQ(target(MediaCommand::next), "a");
    list.update(*list.find("a"), {.canControl = false});
    EXPECT_EQ(target(MediaCommand::next), "b");
}

TEST_F(PlayerListTest, NotOneThatHasSaidNothing) {
    list.add("a", ":1");
    EXPECT_EQ(target(), "none");
}

TEST_F(PlayerListTest, ANameThatPassesOnIsAnotherPlayer) {
    add("a", PlaybackStatus::playing);
    list.add("a", ":2");
    EXPECT_EQ(target(), "none");
    int count = 0;
    list.forOwner(":2", [&](MediaPlayer&) { ++count; });
    list.forOwner(":a", [&](MediaPlayer&) { ++count; });
    EXPECT_EQ(count, 1);
}

TEST_F(PlayerListTest, OnlyAmongTheEligible) {
    add("a", PlaybackStatus::playing);
    add("b", PlaybackStatus::paused);
    const MediaPlayer* player =
        list.target(MediaCommand::next, [](const MediaPlayer& each) { return each.name != "a"; });
    ASSERT_NE(player, nullptr);
    EXPECT_EQ(player->name, "b");
}

} // namespace
} // namespace quillon
