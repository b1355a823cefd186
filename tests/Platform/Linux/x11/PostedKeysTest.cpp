// What becomes of special keys that are posted, up to the moment in which they are to be stroked.

#include "TapBench.h"

namespace quillon {
namespace {

struct PostedKeysTest : TapBench {
    std::vector<SpecialKey> strokes;

    PostedKeysTest() {
        events.setKeyHandler([this](SpecialKey key) { strokes.push_back(key); });
    }

    void post(std::int64_t code, std::int64_t state) {
        const auto event =
            events.createSystemDefinedEvent({.modifierFlags = static_cast<std::uint64_t>(state),
                                             .subtype = 8,
                                             .data1 = code << 16 | state,
                                             .data2 = -1});
        events.post(TapLocation::hid, *event);
    }

    void postPlayPause() {
        post(16, 0xA00);
        post(16, 0xB00);
    }
};

TEST_F(PostedKeysTest, AreStrokedOnce) {
    postPlayPause();
    post(1, 0xA00);
    post(1, 0xB00);
    post(99, 0xA00);
    EXPECT_EQ(strokes, (std::vector{SpecialKey::playPause, SpecialKey::volumeDown}));
}

TEST_F(PostedKeysTest, OfACallbackComeAfterItsAnswer) {
    Probe probe;
    bool wasEarly = false;
    probe.meanwhile = [&] {
        postPlayPause();
        wasEarly = !strokes.empty();
    };
    const auto made = heldTap(probe);
    client.pressWheel(4);
    EXPECT_TRUE(waitUntil([&] { return !strokes.empty(); }));
    EXPECT_FALSE(wasEarly);
    EXPECT_EQ(strokes, std::vector{SpecialKey::playPause});
}

TEST_F(PostedKeysTest, OfACallbackThatAnswersTooLateAreNone) {
    Probe probe;
    const auto made = heldTap(probe);
    probe.meanwhile = [&] {
        postPlayPause();
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (client.wheelPresses() == 0 && std::chrono::steady_clock::now() < deadline) {
        }
    };
    client.pressWheel(4);
    EXPECT_TRUE(waitUntil([&] { return !probe.told.empty(); }));
    EXPECT_TRUE(strokes.empty());
}

TEST_F(PostedKeysTest, WithoutAHandlerAreNothing) {
    events.setKeyHandler(nullptr);
    postPlayPause();
    EXPECT_TRUE(strokes.empty());
}

} // namespace
} // namespace quillon
