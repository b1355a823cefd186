#include "Platform/Linux/x11/X11Connection.h"

#include "support/XServer.h"

#include <gtest/gtest.h>

#include <xcb/randr.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace quillon {
namespace {

TEST(X11ConnectionTest, ExtensionsAreThoseOfTheServer) {
    const XServer server({"-extension", "XTEST"});
    const auto connection = X11Connection::open();
    ASSERT_NE(connection, nullptr);
    EXPECT_TRUE(connection->firstEvent(&xcb_randr_id).has_value());
    EXPECT_TRUE(connection->hasExtension(&xcb_input_id));
    EXPECT_EQ(connection->firstEvent(&xcb_test_id), std::nullopt);
    EXPECT_FALSE(connection->hasExtension(&xcb_test_id));
}

/// Also of one that was known before: whoever asks may do so in the moment in which it goes.
TEST(X11ConnectionTest, WithoutTheServerThereIsNoExtension) {
    XServer server;
    const auto connection = X11Connection::open();
    ASSERT_NE(connection, nullptr);
    ASSERT_TRUE(connection->hasExtension(&xcb_input_id));
    server.kill();
    connection->sync();
    ASSERT_TRUE(connection->isBroken());
    EXPECT_EQ(connection->firstEvent(&xcb_input_id), std::nullopt);
    EXPECT_EQ(connection->firstEvent(&xcb_randr_id), std::nullopt);
    EXPECT_FALSE(connection->hasExtension(&xcb_input_id));
}

} // namespace
} // namespace quillon
