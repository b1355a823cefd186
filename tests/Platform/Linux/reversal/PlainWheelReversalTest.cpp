// Wheels that are plain buttons, turned round by their button maps.

#include "ReversalBench.h"

#include "Platform/Linux/x11/ScrollNotch.h"
#include "support/ChildProgram.h"

#include <filesystem>

#include <sys/socket.h>
#include <xcb/xtest.h>

namespace quillon {
namespace {

using PlainWheelReversal = ReversalBench;

/// The descriptors of this process that are sockets.
std::vector<int> sockets() {
    std::vector<int> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry, gone).string().starts_with("socket:")) {
            found.push_back(std::stoi(entry.path().filename().string()));
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

TEST_F(PlainWheelReversal, TurnsRoundAndBack) {
    client.movePointer(600, 400);
    reversal->follow(mice);
    EXPECT_EQ(notch(4), 5);
    EXPECT_EQ(notch(5), 4);
    EXPECT_EQ(notch(6), 7);
    EXPECT_EQ(notch(7), 6);
    EXPECT_EQ(reversed.plain(), ReversedDevices::Plain::all);
    reversal->follow(none);
    for (const std::uint8_t button : wheelButtons) {
        EXPECT_EQ(notch(button), button);
    }
    EXPECT_EQ(reversed.plain(), ReversedDevices::Plain::none);
    reversal->follow(mice);
    EXPECT_EQ(notch(4), 5);
    reversal.reset();
    EXPECT_EQ(notch(4), 4) << "the end of the program gives back, too";
    EXPECT_EQ(lines, std::vector<std::string>{});
}

TEST_F(PlainWheelReversal, IsForMiceOnly) {
    client.movePointer(600, 400);
    reversal->follow(touchpads);
    EXPECT_EQ(notch(4), 4);
    EXPECT_EQ(reversed.plain(), ReversedDevices::Plain::none);
    reversal->follow(both);
    EXPECT_EQ(notch(4), 5);
    reversal->follow(touchpads);
    EXPECT_EQ(notch(4), 4);
}

TEST_F(PlainWheelReversal, LeavesTheOtherButtonsAsTheyAre) {
    const ButtonMap leftHanded = with(map(injected()), {3, 2, 1});
    setMap(injected(), leftHanded);
    reversal->follow(mice);
    EXPECT_EQ(map(injected()), wheelSwapped(leftHanded));
    reversal->follow(none);
    EXPECT_EQ(map(injected()), leftHanded);
}

TEST_F(PlainWheelReversal, TurnsRoundWhatTheUserHasTurnedRound) {
    const ButtonMap users = with(map(injected()), {1, 2, 3, 5, 4});
    setMap(injected(), users);
    reversal->follow(mice);
    EXPECT_EQ(map(injected()), wheelSwapped(users));
    reversal->follow(none);
    EXPECT_EQ(map(injected()), users);
}

TEST_F(PlainWheelReversal, FollowsAHandThatChanges) {
    const ButtonMap rightHanded = map(injected());
    reversal->follow(mice);
    // As settings programs do it: read, change the two, write.
    setMap(injected(), with(map(injected()), {3, 2, 1}));
    const ButtonMap leftHanded = with(rightHanded, {3, 2, 1});
    EXPECT_TRUE(waitUntil([&] {
        const auto remembered = numbers(injected(), before);
        return remembered == Numbers(leftHanded.begin(), leftHanded.end());
    }));
    EXPECT_EQ(map(injected()), wheelSwapped(leftHanded));
    reversal->follow(none);
    EXPECT_EQ(map(injected()), leftHanded);
}

TEST_F(PlainWheelReversal, ReversesWhatSomebodySetsMeanwhile) {
    const ButtonMap plain = map(injected());
    reversal->follow(mice);
    setMap(injected(), plain);
    EXPECT_TRUE(waitForMap(injected(), wheelSwapped(plain)));
    const ButtonMap users = with(plain, {3, 2, 1, 4, 5});
    setMap(injected(), users);
    EXPECT_TRUE(waitForMap(injected(), wheelSwapped(users)));
    reversal->follow(none);
    EXPECT_EQ(map(injected()), users);
}

TEST_F(PlainWheelReversal, LeavesADeviceThatSomebodyFightsFor) {
    client.movePointer(600, 400);
    addPointer();
    const ButtonMap rivals = map(injected());
    reversal->follow(mice);
    EXPECT_EQ(reversed.plain(), ReversedDevices::Plain::all);
    EXPECT_EQ(notch(4), 5);
    EXPECT_TRUE(reversed.contains(lastPressed(client.connection(), pointer())));
    int rewrites = 0;
    const auto fight = [&] {
        if (map(injected()) != rivals) {
            setMap(injected(), rivals);
            ++rewrites;
        }
        return !lines.empty();
    };
    EXPECT_TRUE(waitUntil(fight));
    EXPECT_EQ(rewrites, 3);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("Virtual core XTEST pointer"), std::string::npos) << lines[0];
    EXPECT_EQ(map(injected()), rivals);
    EXPECT_EQ(numbers(injected(), before), std::nullopt);
    EXPECT_EQ(reversed.plain(), ReversedDevices::Plain::some);
    EXPECT_EQ(notch(4), 4);
    EXPECT_FALSE(reversed.contains(lastPressed(client.connection(), pointer())));

    reversal->follow(both);
    EXPECT_EQ(map(injected()), rivals) << "also when something else changes";
    reversal->follow(none);
    reversal->follow(mice);
    EXPECT_EQ(notch(4), 5) << "switched on anew, it is tried anew";
    EXPECT_EQ(lines.size(), 1U);
}

TEST_F(PlainWheelReversal, WaitsForAButtonThatIsDown) {
    client.movePointer(600, 400);
    const ButtonMap plain = map(injected());
    const ButtonMap mousePlain = map(mouse());
    client.fakeButton(XCB_BUTTON_PRESS, 4);
    client.connection().sync();
    reversal->follow(mice);
    EXPECT_EQ(map(injected()), plain);
    EXPECT_EQ(map(mouse()), wheelSwapped(mousePlain)) << "the others need not wait";
    client.fakeButton(XCB_BUTTON_RELEASE, 4);
    EXPECT_TRUE(waitForMap(injected(), wheelSwapped(plain)));
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 2; }));
    EXPECT_EQ(client.buttons()[1], "release 4");

    client.fakeButton(XCB_BUTTON_PRESS, 5);
    client.connection().sync();
    reversal->follow(none);
    EXPECT_EQ(map(injected()), wheelSwapped(plain));
    client.fakeButton(XCB_BUTTON_RELEASE, 5);
    EXPECT_TRUE(waitForMap(injected(), plain));
    EXPECT_TRUE(waitUntil([&] { return numbers(injected(), before) == std::nullopt; }));
    EXPECT_EQ(lines, std::vector<std::string>{});
}

TEST_F(PlainWheelReversal, IncludesADeviceThatComes) {
    reversal->follow(mice);
    addPointer();
    const auto added = device("second XTEST pointer");
    ASSERT_NE(added, 0);
    EXPECT_TRUE(waitUntil([&] { return reversed.contains(added); }));
    const auto swapped = map(added);
    ASSERT_GE(swapped.size(), 7U);
    EXPECT_EQ(ButtonMap(swapped.begin() + 3, swapped.begin() + 7), (ButtonMap{5, 4, 7, 6}));
    reversal->follow(none);
    EXPECT_EQ(map(added), wheelSwapped(swapped));
}

TEST_F(PlainWheelReversal, RestoresWhatADeadProgramHasLeft) {
    const ButtonMap plain = map(injected());
    const ButtonMap mousePlain = map(mouse());
    ChildProgram program(QUILLON_REVERSE_TAP, {QUILLON_WATCHDOG});
    ASSERT_TRUE(program.says("ready"));
    program.tell("reverse mouse");
    ASSERT_TRUE(program.says("reverse mouse"));
    EXPECT_EQ(map(injected()), wheelSwapped(plain));
    program.end();
    EXPECT_EQ(map(injected()), wheelSwapped(plain)) << "it had no chance to give back";

    reversal->follow(none);
    EXPECT_EQ(map(injected()), plain);
    EXPECT_EQ(map(mouse()), mousePlain);
    EXPECT_EQ(numbers(injected(), before), std::nullopt);
}

TEST_F(PlainWheelReversal, GoesOnWhereADeadProgramHasLeftOff) {
    const ButtonMap plain = map(injected());
    {
        ChildProgram program(QUILLON_REVERSE_TAP, {QUILLON_WATCHDOG});
        ASSERT_TRUE(program.says("ready"));
        program.tell("reverse both");
        ASSERT_TRUE(program.says("reverse both"));
    }
    reversal->follow(mice);
    EXPECT_EQ(map(injected()), wheelSwapped(plain));
    reversal->follow(none);
    EXPECT_EQ(map(injected()), plain);
}

TEST_F(PlainWheelReversal, KeepsWhatTheUserHasSetSinceAProgramDied) {
    const ButtonMap plain = map(injected());
    {
        ChildProgram program(QUILLON_REVERSE_TAP, {QUILLON_WATCHDOG});
        ASSERT_TRUE(program.says("ready"));
        program.tell("reverse mouse");
        ASSERT_TRUE(program.says("reverse mouse"));
    }
    const ButtonMap users = with(plain, {3, 2, 1});
    setMap(injected(), users);
    reversal->follow(none);
    EXPECT_EQ(map(injected()), users);
    EXPECT_EQ(numbers(injected(), before), std::nullopt);
}

TEST_F(PlainWheelReversal, ComesBackAfterItsConnectionWasClosed) {
    const ButtonMap plain = map(injected());
    const auto others = sockets();
    reversal->follow(mice);
    for (const int mine : sockets()) {
        if (std::find(others.begin(), others.end(), mine) == others.end()) {
            ::shutdown(mine, SHUT_RDWR);
        }
    }
    ASSERT_TRUE(waitUntil([&] { return sockets() == others; }));
    EXPECT_EQ(map(injected()), wheelSwapped(plain)) << "nobody has told the device";
    EXPECT_EQ(reversed.plain(), ReversedDevices::Plain::all);
    setMap(injected(), plain);

    reversal->follow(mice);
    EXPECT_EQ(map(injected()), wheelSwapped(plain));
    reversal->follow(none);
    EXPECT_EQ(map(injected()), plain);
    EXPECT_EQ(sockets(), others);
    EXPECT_EQ(lines, std::vector<std::string>{});
}

TEST_F(PlainWheelReversal, SurvivesTheServer) {
    const auto others = sockets();
    reversal->follow(mice);
    server.kill();
    ASSERT_TRUE(waitUntil([&] { return sockets().size() <= others.size(); }));
    reversal->follow(none);
    reversal->follow(mice);
    EXPECT_EQ(lines, std::vector<std::string>{});
}

TEST_F(PlainWheelReversal, HasNoConnectionWithoutNeed) {
    const auto others = sockets();
    reversal->follow(none);
    EXPECT_EQ(sockets(), others);
    reversal->follow(mice);
    EXPECT_EQ(sockets().size(), others.size() + 1);
    reversal->follow(none);
    EXPECT_EQ(sockets(), others);
}

TEST_F(PlainWheelReversal, TurnsEachOfManyQuickNotches) {
    client.movePointer(600, 400);
    reversal->follow(mice);
    constexpr int many = 2000;
    for (int i = 0; i < many; ++i) {
        // The server waits a millisecond before each press.
        xcb_test_fake_input(client.connection().get(), XCB_BUTTON_PRESS, 4, 1, XCB_NONE, 0, 0, 0);
        xcb_test_fake_input(client.connection().get(), XCB_BUTTON_RELEASE, 4, 0, XCB_NONE, 0, 0, 0);
    }
    client.connection().sync();
    EXPECT_TRUE(waitUntil([&] { return client.buttons().size() >= 2 * many; }));
    const auto& got = client.buttons();
    EXPECT_EQ(std::count(got.begin(), got.end(), "press 5"), many);
    EXPECT_EQ(std::count(got.begin(), got.end(), "release 5"), many);
    EXPECT_EQ(got.size(), 2U * many);
}

TEST_F(PlainWheelReversal, WakesNobodyForANotch) {
    client.movePointer(600, 400);
    ChildProgram program(QUILLON_REVERSE_TAP, {QUILLON_WATCHDOG});
    ASSERT_TRUE(program.says("ready"));
    program.tell("reverse both");
    ASSERT_TRUE(program.says("reverse both"));
    EXPECT_TRUE(client.canGrabWheel());
    ASSERT_EQ(notch(4), 5);
    long slept = 0;
    int since = 0;
    ASSERT_TRUE(waitUntil([&] { // until it has dealt with all that it was told
        const long now = program.sleeps();
        since = std::exchange(slept, now) == now ? since + 1 : 0;
        return since == 20;
    }));
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(notch(4), 5);
    }
    EXPECT_LT(program.sleeps() - slept, 10) << "something of its own may have come in between";
    EXPECT_TRUE(client.canGrabWheel());

    program.tell("band pass");
    ASSERT_TRUE(program.says("band pass"));
    client.movePointer(10, 400);
    ASSERT_TRUE(waitUntil([&] { return !client.canGrabWheel(); }));
    slept = program.sleeps();
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(notch(4), 5);
        ASSERT_TRUE(waitUntil([&] { return client.buttonsDown() == 0; }));
    }
    EXPECT_GE(program.sleeps() - slept, 100) << "there it is asked, which shows what is counted";
}

} // namespace
} // namespace quillon
