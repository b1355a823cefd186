#pragma once

#include "Foundation.h"

#include <AppKit/AppKit.h>

#include <set>
#include <string>

namespace quillon::fakes {

struct FakeImage {
    std::string name;
    bool isSymbol = false;
    std::string accessibilityDescription;
    NSSize size{};
    bool isTemplate = false;
};

/// The pictures that there are.
class FakeImages {
  public:
    std::set<std::string> assets;
    std::set<std::string> symbols;
    void reset() { *this = {}; }
};

inline FakeImage& fakeImage(NSImage* image) { return stateOf<FakeImage>(image); }
FakeImages& fakeImages();

} // namespace quillon::fakes
