// A program with a tap of left presses, as a tool has one, told on standard input what to do. It
// answers each line with the same line when it has been done.
//
//     contacts COUNT   so many fingers rest; with three of them the tap is armed
//     answer WORD      what the tap does while armed: click (consume, and click the middle button),
//                      pass; or, in the midst of the question, stop or die by a signal
//     die-pressed      with the next click, die while the middle button is down
//     band             hold what scrolls at the left edge, too
//     scrolls WORD     what the tap does with that: consume (at first), pass, or each by turns
//     listen WORD      whether the monitor is armed: yes (at first), no
//
// It prints "asked X Y", "down", "up", "scrolled" and what a monitor hears by itself: "heard TYPE
// BUTTON", or of scrolling "heard TYPE RIGHT UP".
#include "Platform/Linux/session/QtRunLoop.h"
#include "Platform/Linux/x11/X11EventMonitors.h"
#include "Platform/Linux/x11/X11EventServices.h"
#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

#include <unistd.h>

namespace {

using namespace quillon;

std::string described(const MonitoredEvent& event) {
    std::string line = "heard " + std::to_string(static_cast<unsigned>(event.type)) + ' ';
    if (event.type != EventType::scrollWheel) {
        return line + std::to_string(static_cast<unsigned>(event.buttonNumber));
    }
    return line + std::to_string(static_cast<int>(event.deltaX)) + ' ' +
           std::to_string(static_cast<int>(event.deltaY));
}

void say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

bool everywhere(Point, std::span<const Rect>) { return true; }
bool atLeftEdge(Point pointer, std::span<const Rect>) { return pointer.x <= 40; }

class PressTap {
  public:
    explicit PressTap(const char* watchdog)
        : events_(
              loop_, diagnostics_, displays_, [this] { return session_.isGranted(); }, watchdog,
              postedEvents_, caughtPresses_) {}

    bool start() {
        if (!session_.isProcessTrusted()) {
            return false;
        }
        presses_ = tap(EventType::leftMouseDown, onPress);
        monitor_ = monitors_.addGlobalMonitor(
            ~std::uint64_t{0}, [](const MonitoredEvent& event) { say(described(event)); }, {});
        return presses_ != nullptr && monitor_ != nullptr;
    }

    bool obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        int contacts = 0;
        if (command == "contacts" && words >> contacts) {
            contacts_ = contacts;
            events_.setArmedAt(*presses_, contacts == 3 ? ArmedAt(everywhere) : nullptr);
        } else if (command == "answer") {
            words >> answer_;
        } else if (command == "die-pressed") {
            diesPressed_ = true;
        } else if (command == "band") {
            scrolls_ = tap(EventType::scrollWheel, onScroll);
            events_.setArmedAt(*scrolls_, atLeftEdge);
        } else if (command == "scrolls") {
            words >> scrollAnswer_;
        } else if (std::string word; command == "listen" && words >> word) {
            monitors_.setArmed(*monitor_, word == "yes");
        } else {
            return false;
        }
        return true;
    }

  private:
    EventTapRef tap(EventType type, EventTapCallback callback) {
        auto made =
            events_.createTap(TapLocation::hid, TapPlacement::headInsert, TapOptions::filtering,
                              eventMask(type), callback, this, "press_tap");
        loop_.addSource(events_.createRunLoopSource(made));
        events_.enableTap(*made, true);
        return made;
    }

    static Event* onScroll(EventType type, Event* event, void* userInfo) {
        auto& self = *static_cast<PressTap*>(userInfo);
        if (type != EventType::scrollWheel) {
            say("disabled");
            self.events_.enableTap(*self.scrolls_, true);
            return nullptr;
        }
        say("scrolled");
        const bool passes = self.scrollAnswer_ == "pass" ||
                            (self.scrollAnswer_ == "each" && self.scrolled_++ % 2 != 0);
        return passes ? event : nullptr;
    }

    static Event* onPress(EventType type, Event* event, void* userInfo) {
        auto& self = *static_cast<PressTap*>(userInfo);
        if (type != EventType::leftMouseDown) {
            say("disabled");
            self.events_.enableTap(*self.presses_, true);
            return nullptr;
        }
        return self.pressed(*event) ? event : nullptr;
    }

    /// Whether the press passes.
    bool pressed(const Event& event) {
        const EventRef empty = events_.createEvent();
        const Point place = empty->location();
        say("asked " + std::to_string(static_cast<int>(event.location().x)) + ' ' +
            std::to_string(static_cast<int>(event.location().y)));
        if (contacts_ != 3 || answer_ == "pass") {
            return true;
        }
        if (answer_ == "stop") {
            answer_ = "click";
            ::raise(SIGSTOP);
        } else if (answer_ == "die") {
            ::raise(SIGKILL);
        }
        post(EventType::otherMouseDown, place);
        say("down");
        if (!diesPressed_) {
            QTimer::singleShot(10, Qt::PreciseTimer, [this, place] {
                post(EventType::otherMouseUp, place);
                say("up");
            });
        }
        return false;
    }

    void post(EventType type, Point place) {
        events_.post(TapLocation::hid, *events_.createMouseEvent(type, place, MouseButton::middle));
    }

    QtRunLoop loop_;
    SimulatedDiagnostics diagnostics_{[](std::string_view, const std::string& text) { say(text); }};
    X11Displays displays_;
    X11Session session_{diagnostics_, displays_, [] { QCoreApplication::exit(1); }};
    PostedEvents postedEvents_;
    CaughtPresses caughtPresses_;
    X11EventServices events_;
    OwnWindows ownWindows_;
    X11EventMonitors monitors_{ownWindows_, postedEvents_, caughtPresses_};
    EventTapRef presses_;
    EventTapRef scrolls_;
    EventMonitorRef monitor_;
    int contacts_ = 0;
    bool diesPressed_ = false;
    std::string answer_ = "click";
    std::string scrollAnswer_ = "consume";
    unsigned scrolled_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: press_tap WATCHDOG\n", stderr);
        return 2;
    }
    PressTap taps(argv[1]);
    if (!taps.start()) {
        return 1;
    }
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        // One at a time comes in: the other side waits for the answer.
        std::string line;
        if (!std::getline(std::cin, line)) {
            QCoreApplication::quit();
        } else {
            say(taps.obey(line) ? line : "error: " + line);
        }
    });
    say("ready");
    return QCoreApplication::exec();
}
