#pragma once

#include "Platform/Linux/session/QtRunLoop.h"
#include "Platform/Linux/x11/X11EventServices.h"
#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Simulated/SimulatedDesktop.h"
#include "support/XServer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quillon {

/// A tap that writes down what it saw, and does as it is told.
struct Probe {
    X11Displays* displays = nullptr;
    bool consumes = true;
    std::function<void()> meanwhile; // runs inside the callback
    std::vector<EventType> told;
    std::vector<Point> places;
    std::vector<Point> eventPlaces;
    std::vector<std::pair<double, double>> deltas;
    int number = 0;
    std::vector<int>* order = nullptr;

    static Event* callback(EventType type, Event* event, void* userInfo) {
        auto& probe = *static_cast<Probe*>(userInfo);
        if (event == nullptr) {
            probe.told.push_back(type);
            return nullptr;
        }
        if (probe.order != nullptr) {
            probe.order->push_back(probe.number);
        }
        probe.places.push_back(probe.displays->mouseLocation());
        probe.eventPlaces.push_back(event->location());
        probe.deltas.emplace_back(event->doubleValueField(EventField::scrollLineDeltaAxis1),
                                  event->doubleValueField(EventField::scrollLineDeltaAxis2));
        if (probe.meanwhile) {
            probe.meanwhile();
        }
        return probe.consumes ? nullptr : event;
    }
};

inline bool leftBand(Point pointer, std::span<const Rect> screens) {
    return !screens.empty() && pointer.x <= 40;
}

/// Taps on a real X server, in one process with the main thread under the test's control.
struct TapBench : testing::Test {
    XServer server;
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QtRunLoop loop;
    std::vector<std::string> lines;
    std::mutex mutex;
    SimulatedDiagnostics diagnostics{[this](std::string_view, const std::string& text) {
        const std::scoped_lock lock(mutex);
        lines.push_back(text);
    }};
    X11Displays displays;
    bool lost = false;
    X11Session session{diagnostics, displays, [this] { lost = true; }};
    PostedEvents postedEvents;
    CaughtPresses caughtPresses;
    X11EventServices events{loop,
                            diagnostics,
                            displays,
                            [this] { return session.isGranted(); },
                            QUILLON_WATCHDOG,
                            postedEvents,
                            caughtPresses};
    XClient client;

    EventTapRef tap(Probe& probe, ArmedAt armedAt = leftBand,
                    EventType type = EventType::scrollWheel) {
        probe.displays = &displays;
        EXPECT_TRUE(session.isProcessTrusted());
        auto made =
            events.createTap(TapLocation::hid, TapPlacement::headInsert, TapOptions::filtering,
                             eventMask(type), Probe::callback, &probe, "probe");
        loop.addSource(events.createRunLoopSource(made));
        events.setArmedAt(*made, std::move(armedAt));
        events.enableTap(*made, true);
        return made;
    }

    /// A tap in whose band the pointer is, once the wheel is held.
    EventTapRef heldTap(Probe& probe) {
        client.movePointer(10, 400);
        auto made = tap(probe);
        EXPECT_TRUE(waitUntilHeld());
        return made;
    }

    bool waitUntilHeld() {
        return waitUntil([this] { return !client.canGrabWheel(); });
    }
    bool waitUntilFree() {
        return waitUntil([this] { return client.canGrabWheel(); });
    }
    std::size_t lineCount() {
        const std::scoped_lock lock(mutex);
        return lines.size();
    }
};

} // namespace quillon
