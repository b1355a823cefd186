#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillon::fakes {

/// The system's automation scripts.
class FakeScripts {
  public:
    std::vector<std::string> sources;  // of the objects that were made
    std::vector<std::string> executed; // sources as well
    bool makesScripts = true;
    bool compiles = true;
    std::optional<std::string> failure; // the message of executing one

    void reset() { *this = {}; }
};

FakeScripts& fakeScripts();

} // namespace quillon::fakes
