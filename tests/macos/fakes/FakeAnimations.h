#pragma once

#include <AppKit/AppKit.h>

#include <string>
#include <vector>

namespace quillon::fakes {

/// The animations of the system, which go on only when a test advances them.
class FakeAnimations {
  public:
    struct Group {
        double duration = 0.25; // seconds
        std::string timingFunction;
        bool allowsImplicitAnimation = true;
        double elapsed = 0;
        bool isOver = false;
        void (^completion)(void) = nullptr;
    };
    struct Change {
        NSView* view = nil;
        double from = 0;
        double to = 0;
        std::size_t group = 0;
    };

    /// Lets so many seconds go by: alphas change evenly, and groups that are over say so.
    void advance(double seconds);

    std::vector<Group> groups;     // all there were
    std::vector<Change> running;   // no more than one for a view
    std::vector<std::size_t> open; // groups in whose block or between whose ends we are

    void animateAlpha(NSView* view, double alpha);
    void reset() { *this = {}; }
};

FakeAnimations& fakeAnimations();

} // namespace quillon::fakes
