#include "Platform/Linux/session/BusAddress.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(BusAddress, SocketsOfThisMachine) {
    EXPECT_EQ(busSocket("unix:path=/run/user/1000/bus"), (BusSocket{"/run/user/1000/bus"}));
    EXPECT_EQ(busSocket("unix:guid=12,path=/a%20b,x=y"), (BusSocket{"/a b"}));
    EXPECT_EQ(busSocket("unix:abstract=/tmp/dbus-x,guid=1"), (BusSocket{"/tmp/dbus-x", true}));
}

TEST(BusAddress, WhatIsNoSocketOfThisMachine) {
    for (const char* address :
         {"", "unix:", "unix:path=", "unix:path", "unix:tmpdir=/tmp", "unix:path=/a%2",
          "unix:path=/a%zz", "tcp:host=localhost,port=1", "autolaunch:", "disabled:"}) {
        EXPECT_EQ(busSocket(address), std::nullopt) << address;
    }
}

TEST(BusAddress, WritesWhatItReads) {
    EXPECT_EQ(busAddress({"/run/user/1000/bus"}), "unix:path=/run/user/1000/bus");
    EXPECT_EQ(busAddress({"/a b,ü;%="}), "unix:path=/a%20b%2c%c3%bc%3b%25%3d");
    for (const BusSocket& socket : {BusSocket{"/a b,ü;%="}, BusSocket{"x\ny", true}}) {
        EXPECT_EQ(busSocket(busAddress(socket)), socket);
    }
}

TEST(BusAddress, NobodyAnswersWhereNobodyListens) {
    using std::chrono::milliseconds;
    EXPECT_FALSE(busAnswers({"/nowhere/bus"}, milliseconds(1)));
    EXPECT_FALSE(busAnswers({std::string(500, 'x')}, milliseconds(1)));
    EXPECT_FALSE(busAnswers({"quillon-test-nobody", true}, milliseconds(1)));
}

} // namespace
} // namespace quillon
