// Injects scrolls into the X server of $DISPLAY and times what comes of them, as another program
// sees it.
//
//   scroll_latency pass COUNT            until a window under the pointer has received the scroll
//   scroll_latency switch COUNT NOTCHES  from the last of so many notches until the desktop changed
//   scroll_latency turned COUNT          as pass, with notches at least ten milliseconds apart
//   scroll_latency spin COUNT APART      nothing is timed: notches come so many milliseconds apart,
//                                        whatever becomes of them
//
// Prints one line: the median and the 99th percentile in microseconds, and how many arrived, except
// for spin. For turned and spin: how many arrived the other way, and how many as they were sent.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace {

using Clock = std::chrono::steady_clock;
using Event = std::unique_ptr<xcb_generic_event_t, decltype(&std::free)>;

constexpr std::chrono::milliseconds givenUpAfter{1000};
/// Between notches: input faster than this no device produces.
constexpr std::chrono::milliseconds gap{2};
/// Between those of a wheel that is turned quickly.
constexpr std::chrono::milliseconds quickTurn{10};

struct Display {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;

    /// The next event before the deadline.
    [[nodiscard]] Event next(Clock::time_point deadline) const {
        for (;;) {
            if (auto* event = xcb_poll_for_event(connection)) {
                return {event, &std::free};
            }
            const auto left = deadline - Clock::now();
            if (left.count() <= 0) {
                return {nullptr, &std::free};
            }
            const auto ns = std::chrono::duration_cast<std::chrono::nanoseconds>(left).count();
            const timespec timeout{ns / 1'000'000'000, ns % 1'000'000'000};
            pollfd source{xcb_get_file_descriptor(connection), POLLIN, 0};
            ppoll(&source, 1, &timeout, nullptr);
        }
    }

    void drainFor(std::chrono::milliseconds time) const {
        const auto deadline = Clock::now() + time;
        while (next(deadline)) {
        }
    }

    void notch(std::uint8_t button) const {
        for (const std::uint8_t type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE}) {
            xcb_test_fake_input(connection, type, button, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        }
        xcb_flush(connection);
    }

    /// Time from now until an event of this type arrives, if it does.
    [[nodiscard]] std::optional<double> microsecondsUntil(std::uint8_t type) const {
        const auto start = Clock::now();
        while (const Event event = next(start + givenUpAfter)) {
            if ((event->response_type & 0x7F) == type) {
                return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
            }
        }
        return std::nullopt;
    }
};

/// All over the screen, under the pointer wherever that is.
void openWindow(const Display& display) {
    const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_BUTTON_PRESS};
    const xcb_window_t window = xcb_generate_id(display.connection);
    xcb_create_window(display.connection, XCB_COPY_FROM_PARENT, window, display.root, 0, 0, 2000,
                      2000, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(display.connection, window);
    display.drainFor(std::chrono::milliseconds(100));
}

std::vector<double> timePasses(const Display& display, int count) {
    openWindow(display);
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        display.notch(4);
        if (const auto time = display.microsecondsUntil(XCB_BUTTON_PRESS)) {
            times.push_back(*time);
        } else if (times.empty() && i >= 2) {
            break; // somebody keeps them all
        }
        display.drainFor(gap);
    }
    return times;
}

/// What becomes of notches that are sent upwards.
struct Arrivals {
    std::vector<double> times; ///< Microseconds, of those that arrived.
    int turned = 0;
    int straight = 0;

    /// Whether it is one.
    bool count(const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7F) != XCB_BUTTON_PRESS) {
            return false;
        }
        const auto button = reinterpret_cast<const xcb_button_press_event_t&>(event).detail;
        ++(button == 5 ? turned : straight);
        return true;
    }

    void countUntil(const Display& display, Clock::time_point deadline) {
        while (const Event event = display.next(deadline)) {
            count(*event);
        }
    }
};

Arrivals timeTurned(const Display& display, int count) {
    openWindow(display);
    Arrivals arrivals;
    for (int i = 0; i < count; ++i) {
        display.notch(4);
        const auto start = Clock::now();
        while (const Event event = display.next(start + givenUpAfter)) {
            if (arrivals.count(*event)) {
                arrivals.times.push_back(
                    std::chrono::duration<double, std::micro>(Clock::now() - start).count());
                break;
            }
        }
        arrivals.countUntil(display, std::max(start + quickTurn, Clock::now() + gap));
    }
    return arrivals;
}

Arrivals spin(const Display& display, int count, std::chrono::milliseconds apart) {
    openWindow(display);
    Arrivals arrivals;
    auto next = Clock::now();
    for (int i = 0; i < count; ++i) {
        display.notch(4);
        next += apart;
        arrivals.countUntil(display, next);
    }
    arrivals.countUntil(display, Clock::now() + givenUpAfter);
    return arrivals;
}

std::vector<double> timeSwitches(const Display& display, int count, int notches) {
    const xcb_intern_atom_cookie_t cookie = xcb_intern_atom(
        display.connection, 0, std::strlen("_NET_CURRENT_DESKTOP"), "_NET_CURRENT_DESKTOP");
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(display.connection, cookie, nullptr), &std::free);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(display.connection, display.root, XCB_CW_EVENT_MASK, &mask);
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        const std::uint8_t button = i % 2 == 0 ? 5 : 4; // next, then back again
        for (int n = 1; n < notches; ++n) {
            display.notch(button);
            display.drainFor(gap);
        }
        display.notch(button);
        const auto start = Clock::now();
        while (const Event event = display.next(start + givenUpAfter)) {
            const auto* property =
                reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            if ((event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY &&
                property->atom == atom->atom) {
                times.push_back(
                    std::chrono::duration<double, std::micro>(Clock::now() - start).count());
                break;
            }
        }
        display.drainFor(std::chrono::milliseconds(20));
    }
    return times;
}

void print(std::vector<double> times, int count) {
    std::sort(times.begin(), times.end());
    const auto at = [&](double share) {
        return times.empty()
                   ? -1.0
                   : times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
    };
    std::printf("%.1f %.1f %zu/%d", at(0.5), at(0.99), times.size(), count);
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc > 2 ? argv[1] : "";
    const int count = argc > 2 ? std::atoi(argv[2]) : 0;
    const int further = argc > 3 ? std::atoi(argv[3]) : 1;
    const Display display;
    if (what == "pass") {
        print(timePasses(display, count), count);
    } else if (what == "switch") {
        print(timeSwitches(display, count, further), count);
    } else if (what == "turned") {
        const Arrivals arrivals = timeTurned(display, count);
        print(arrivals.times, count);
        std::printf(" %d %d", arrivals.turned, arrivals.straight);
    } else if (what == "spin") {
        const Arrivals arrivals = spin(display, count, std::chrono::milliseconds(further));
        std::printf("%d %d", arrivals.turned, arrivals.straight);
    } else {
        std::fprintf(stderr, "usage: scroll_latency pass COUNT | switch COUNT NOTCHES | "
                             "turned COUNT | spin COUNT APART\n");
        return 2;
    }
    std::puts("");
    return 0;
}
