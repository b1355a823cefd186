#include "Platform/Linux/keys/KeyGrabProbe.h"

#include "KeysBench.h"

namespace quillon {
namespace {

/// A press in the moment in which the question is asked.
TEST(KeyGrabProbeTest, AKeyThatIsPressedMeanwhileGoesOn) {
    const XServer server;
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    const auto connection = X11Connection::open();
    KeyGrabProbe probe(*connection);
    KeyClient window;
    KeyClient hand;
    window.focus();
    const auto keycode = window.keycodes(keysymOf(SpecialKey::next)).front();
    probe.take(keycode);
    hand.pressKey(keycode, true);
    EXPECT_TRUE(window.seen().empty()); // or this test is none
    EXPECT_FALSE(probe.letGo());
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection->get())}) {
        probe.note(*event);
    }
    hand.pressKey(keycode, false);
    EXPECT_EQ(KeysBench::seen(window), strokes("next"));
    EXPECT_FALSE(window.isAnyDown());
}

} // namespace
} // namespace quillon
