#pragma once

#include "FakePlayer.h"
#include "KeyClient.h"

#include "Platform/Linux/keys/SpecialKeys.h"
#include "Platform/Linux/session/QtRunLoop.h"
#include "support/MessageBus.h"
#include "support/TemporaryFolder.h"
#include "support/XServer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace quillon {

using Words = std::vector<std::string>;

inline Words strokes(const std::string& key, int count = 1) {
    Words words;
    for (int i = 0; i < count; ++i) {
        words.push_back("down " + key);
        words.push_back("up " + key);
    }
    return words;
}

/// Keys on a real X server, with a message bus.
struct KeysBench : testing::Test {
    XServer server;
    TemporaryFolder folder;
    MessageBus bus{folder.path() / "bus"};
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QtRunLoop loop;
    KeyClient window; // that has the keyboard
    std::optional<SpecialKeys> keys;

    KeysBench() {
        window.focus();
        keys.emplace(loop, bus.address());
    }

    /// Waits until the client has seen so much at least, and answers all.
    static Words seen(KeyClient& client, std::size_t count = 2) {
        waitUntil([&] { return client.seen().size() >= count; });
        return client.seen();
    }

    static Words commands(FakePlayer& player, std::size_t count = 1) {
        waitUntil([&] { return player.commands().size() >= count; });
        return player.commands();
    }

    /// Until everything that was stroked before is dealt with: a key that always goes to the window
    /// comes after it.
    void fence() {
        const auto before = window.seen().size();
        keys->stroke(SpecialKey::volumeDown);
        waitUntil([&] { return window.seen().size() >= before + 2; });
    }
};

} // namespace quillon
