#pragma once

#include "Foundation.h"

#include <AppKit/AppKit.h>

#include <string>
#include <vector>

namespace quillon::fakes {

struct FakeFont {
    double size = 0;
    double weight = 0;
    bool isMonospaced = false;
};

struct FakeColor {
    std::string name;
    double alpha = 1;
};

struct DrawnText {
    std::string text;
    NSRect rect{};
    FakeFont font;
    FakeColor color;
};

inline FakeFont& fakeFont(NSFont* font) { return stateOf<FakeFont>(font); }
inline FakeColor& fakeColor(NSColor* color) { return stateOf<FakeColor>(color); }

/// What has been drawn so far. A text is 0.6 of its font's size wide for each byte, and as high.
std::vector<DrawnText>& drawnTexts();

} // namespace quillon::fakes
