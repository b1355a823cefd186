#pragma once

#include <AppKit/AppKit.h>

#include <optional>
#include <vector>

namespace quillon::fakes {

class FakeApplication {
  public:
    id<NSApplicationDelegate> delegate = nil;
    NSEvent* currentEvent = nil;
    std::optional<NSApplicationActivationPolicy> policy;
    std::vector<id> terminations; // their senders
    void reset() { *this = {}; }
};

FakeApplication& fakeApplication();

} // namespace quillon::fakes
