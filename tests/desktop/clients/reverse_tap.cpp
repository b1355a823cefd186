// A program with a tap that reverses scrolling, as a tool has one, told on standard input what to
// do. It answers each line with the same line when it has been done, the devices included.
//
//     reverse WHAT    mouse, trackpad, both, or none
//     again WHAT      the same for a second such tap
//     band ANSWER     at the left edge there is another tap, newer than all so far; it answers pass
//                     or consume, and prints "notch LINES LINES POINTS POINTS" for each scroll, by
//                     the vertical and the horizontal field of each
#include "Platform/Linux/session/QtRunLoop.h"
#include "Platform/Linux/x11/X11EventServices.h"
#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <cstdio>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>

#include <unistd.h>

namespace {

using namespace quillon;

void say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

bool atLeftEdge(Point pointer, std::span<const Rect>) { return pointer.x <= 40; }

std::optional<ConstantRewrite> rewriteOf(const std::string& word) {
    const bool isBoth = word == "both";
    if (!isBoth && word != "mouse" && word != "trackpad" && word != "none") {
        return std::nullopt;
    }
    return ConstantRewrite{isBoth || word == "mouse", isBoth || word == "trackpad"};
}

class Reversing {
  public:
    ConstantRewrite rewrite;
    EventTapRef tap;

    static Event* callback(EventType /*type*/, Event* event, void* userInfo) {
        using enum EventField;
        const auto& self = *static_cast<Reversing*>(userInfo);
        if (event == nullptr) {
            return nullptr;
        }
        const bool isContinuous = event->integerValueField(scrollIsContinuous) != 0;
        if (isContinuous ? self.rewrite.reversesContinuous : self.rewrite.reversesLines) {
            for (const auto field :
                 {scrollLineDeltaAxis1, scrollLineDeltaAxis2, scrollFixedPointDeltaAxis1,
                  scrollFixedPointDeltaAxis2, scrollPointDeltaAxis1, scrollPointDeltaAxis2}) {
                event->setDoubleValueField(field, -event->doubleValueField(field));
            }
        }
        return event;
    }
};

class ReverseTap {
  public:
    explicit ReverseTap(const char* watchdog)
        : events_(
              loop_, diagnostics_, displays_, [this] { return session_.isGranted(); }, watchdog,
              postedEvents_, caughtPresses_) {}

    bool start() { return session_.isProcessTrusted(); }

    bool obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        std::string word;
        words >> command >> word;
        if (command == "band" && (word == "pass" || word == "consume")) {
            consumes_ = word == "consume";
            band_ = tap(onNotch, this);
            events_.setArmedAt(*band_, atLeftEdge);
            return true;
        }
        const auto rewrite = rewriteOf(word);
        if (!rewrite || (command != "reverse" && command != "again")) {
            return false;
        }
        follow(command == "reverse" ? taps_[0] : taps_[1], *rewrite);
        return true;
    }

    /// What has been changed takes effect when the main queue has run.
    void whenDone(std::function<void()> done) { loop_.async(std::move(done)); }

  private:
    EventTapRef tap(EventTapCallback callback, void* userInfo) {
        auto made =
            events_.createTap(TapLocation::hid, TapPlacement::headInsert, TapOptions::filtering,
                              eventMask(EventType::scrollWheel), callback, userInfo, "reverse_tap");
        loop_.addSource(events_.createRunLoopSource(made));
        events_.enableTap(*made, true);
        return made;
    }

    void follow(Reversing& reversing, ConstantRewrite rewrite) {
        reversing.rewrite = rewrite;
        if (rewrite == ConstantRewrite{}) {
            reversing.tap.reset();
            return;
        }
        if (!reversing.tap) {
            reversing.tap = tap(Reversing::callback, &reversing);
        }
        events_.setConstantRewrite(*reversing.tap, rewrite);
    }

    static Event* onNotch(EventType /*type*/, Event* event, void* userInfo) {
        using enum EventField;
        if (event == nullptr) {
            say("disabled");
            return nullptr;
        }
        std::ostringstream line;
        line << "notch";
        for (const auto field : {scrollLineDeltaAxis1, scrollLineDeltaAxis2, scrollPointDeltaAxis1,
                                 scrollPointDeltaAxis2}) {
            line << ' ' << event->doubleValueField(field);
        }
        say(line.str());
        return static_cast<ReverseTap*>(userInfo)->consumes_ ? nullptr : event;
    }

    QtRunLoop loop_;
    SimulatedDiagnostics diagnostics_{[](std::string_view, const std::string& text) { say(text); }};
    X11Displays displays_;
    X11Session session_{diagnostics_, displays_, [] { QCoreApplication::exit(1); }};
    PostedEvents postedEvents_;
    CaughtPresses caughtPresses_;
    X11EventServices events_;
    std::array<Reversing, 2> taps_;
    EventTapRef band_;
    bool consumes_ = false;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: reverse_tap WATCHDOG\n", stderr);
        return 2;
    }
    ReverseTap taps(argv[1]);
    if (!taps.start()) {
        return 1;
    }
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        // One at a time comes in: the other side waits for the answer.
        std::string line;
        if (!std::getline(std::cin, line)) {
            QCoreApplication::quit();
        } else if (taps.obey(line)) {
            taps.whenDone([line] { say(line); });
        } else {
            say("error: " + line);
        }
    });
    taps.whenDone([] { say("ready"); });
    return QCoreApplication::exec();
}
