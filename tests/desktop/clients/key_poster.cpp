// Not one that judges: the platform by itself, in the place of a tool that posts special keys. It
// answers each line on standard input with the same line when it has been done.
//
//     key CODE [COUNT [MILLISECONDS]]   presses and releases the key, several times so far apart
//
// Of each press it prints the moment before, in nanoseconds of the monotonic clock, and how long
// posting took:
//
//     posted CODE 123456789 12000
#include "Platform/Linux/keys/SpecialKeys.h"
#include "Platform/Linux/session/QtRunLoop.h"
#include "Platform/Linux/session/SessionBus.h"
#include "Platform/Linux/x11/X11EventServices.h"
#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

#include <unistd.h>

namespace {

using namespace quillon;

void say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

long long now() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

class KeyPoster {
  public:
    KeyPoster() {
        (void)session_.isProcessTrusted();
        events_.setKeyHandler([this](SpecialKey key) { keys_.stroke(key); });
    }

    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        int code = 0;
        int count = 1;
        int apart = 0;
        if (!(words >> command >> code) || command != "key") {
            say("error: " + line);
            return;
        }
        words >> count >> apart;
        for (int i = 0; i < count; ++i) {
            QTimer::singleShot(i * apart, Qt::PreciseTimer,
                               [this, code, line, isLast = i == count - 1] {
                                   press(code);
                                   if (isLast) {
                                       say(line);
                                   }
                               });
        }
    }

  private:
    void press(int code) {
        const auto made = [&](std::int64_t state) {
            return events_.createSystemDefinedEvent(
                {.modifierFlags = static_cast<std::uint64_t>(state),
                 .subtype = 8,
                 .data1 = (std::int64_t{code} << 16) | state,
                 .data2 = -1});
        };
        const EventRef down = made(0xA00);
        const EventRef up = made(0xB00);
        const auto before = now();
        events_.post(TapLocation::hid, *down);
        events_.post(TapLocation::hid, *up);
        say("posted " + std::to_string(code) + ' ' + std::to_string(before) + ' ' +
            std::to_string(now() - before));
    }

    QtRunLoop loop_;
    SimulatedDiagnostics diagnostics_{[](std::string_view, const std::string& text) { say(text); }};
    X11Displays displays_;
    X11Session session_{diagnostics_, displays_, [] { QCoreApplication::exit(1); }};
    PostedEvents postedEvents_;
    CaughtPresses caughtPresses_;
    SpecialKeys keys_{loop_, sessionBusAddress()};
    X11EventServices events_{
        loop_,         diagnostics_,  displays_,     [this] { return session_.isGranted(); },
        "no watchdog", postedEvents_, caughtPresses_};
};

} // namespace

int main(int argc, char** argv) {
    settleSessionBus();
    const QCoreApplication application(argc, argv);
    KeyPoster poster;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        // One at a time comes in: the other side waits for the answer.
        std::string line;
        if (!std::getline(std::cin, line)) {
            QCoreApplication::quit();
        } else {
            poster.obey(line);
        }
    });
    say("ready");
    return QCoreApplication::exec();
}
