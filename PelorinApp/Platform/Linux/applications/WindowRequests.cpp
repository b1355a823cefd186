#include "Platform/Linux/applications/WindowRequests.h"

#include "Platform/Linux/applications/AskedWindow.h"
#include "Platform/Linux/applications/WindowReader.h"

#include <algorithm>
#include <array>
#include <map>
#include <vector>

namespace quillon {

namespace {

constexpr std::uint32_t mostValues = 1 << 16; // units of four bytes
constexpr std::uint32_t sourceUser = 2;       // not the application itself: it is obeyed

bool contains(std::span<const xcb_window_t> windows, xcb_window_t window) {
    return std::find(windows.begin(), windows.end(), window) != windows.end();
}

} // namespace

/// What there is when a request is made.
struct WindowRequests::Scene {
    struct Place {
        xcb_window_t window;
        std::uint32_t desktop; // everyDesktop also where there is only one
    };

    std::vector<Place> places; // front to back, without those that are minimised or gone
    std::optional<std::uint32_t> currentDesktop;
    xcb_timestamp_t time;
    bool canRestack; // the window manager takes requests for it

    [[nodiscard]] bool isPresent(const Place& place) const {
        return place.desktop == everyDesktop || place.desktop == currentDesktop;
    }
};

WindowRequests::Scene WindowRequests::look(std::span<const xcb_window_t> windows) const {
    xcb_connection_t* const x = link_.get();
    const auto& atoms = link_.atoms();
    link_.askTime();
    const AskedStacking askedStacking(link_);
    const AskedProperty askedDesktop(x, link_.root(), atoms.currentDesktop, 1);
    const AskedProperty askedSupported(x, link_.root(), atoms.supported, mostValues);
    std::vector<AskedState> asked;
    asked.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        asked.emplace_back(link_, window);
    }
    xcb_flush(x); // all of it, or waiting for the first answer would send only its question

    const auto frontToBack = askedStacking.answer().value_or(std::vector<xcb_window_t>{});
    const auto supportedReply = askedSupported.reply();
    const auto supported = valuesOf(supportedReply);

    Scene scene;
    scene.currentDesktop = firstOf(askedDesktop.reply());
    scene.canRestack =
        std::find(supported.begin(), supported.end(), atoms.restack) != supported.end();
    std::map<xcb_window_t, Scene::Place> present;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto state = asked[i].answer();
        if (state && state->isManaged && !isMinimised(*state, scene.currentDesktop)) {
            present[windows[i]] = {windows[i], state->desktop.value_or(everyDesktop)};
        }
    }
    for (const xcb_window_t window : frontToBack) {
        if (const auto found = present.find(window); found != present.end()) {
            scene.places.push_back(found->second);
        }
    }
    scene.time = link_.takeTime();
    return scene;
}

bool WindowRequests::activate(std::span<const xcb_window_t> windows,
                              std::span<const xcb_window_t> companions) const {
    std::vector<xcb_window_t> concerned(windows.begin(), windows.end());
    for (const xcb_window_t companion : companions) {
        if (!contains(windows, companion)) {
            concerned.push_back(companion);
        }
    }
    const Scene scene = look(concerned);
    const Scene::Place* target = nullptr;
    for (const auto& place : scene.places) {
        if (contains(windows, place.window) &&
            (target == nullptr || (!scene.isPresent(*target) && scene.isPresent(place)))) {
            target = &place;
        }
    }
    if (target == nullptr) {
        return false;
    }
    if (!scene.isPresent(*target)) {
        // Without a time: for xfwm4 the window that had the keyboard on that desktop would be as
        // fresh as the one that is to get it, and keep it.
        ask(link_.root(), link_.atoms().currentDesktop, target->desktop, XCB_CURRENT_TIME);
    }
    const std::uint32_t desktop =
        scene.isPresent(*target) ? scene.currentDesktop.value_or(everyDesktop) : target->desktop;
    std::vector<xcb_window_t> backToFront;
    for (const auto& place : scene.places) {
        if (&place != target && contains(companions, place.window) &&
            (place.desktop == everyDesktop || place.desktop == desktop)) {
            backToFront.insert(backToFront.begin(), place.window);
        }
    }
    backToFront.push_back(target->window);
    bringForward(scene, backToFront);
    xcb_flush(link_.get());
    return true;
}

bool WindowRequests::raise(xcb_window_t window) const {
    const std::array<xcb_window_t, 1> windows{window};
    const Scene scene = look(windows);
    if (scene.places.empty()) {
        return false;
    }
    if (scene.canRestack) {
        ask(window, link_.atoms().restack, sourceUser, XCB_NONE, XCB_STACK_MODE_ABOVE);
    } else {
        focus(scene, window);
    }
    xcb_flush(link_.get());
    return true;
}

/// The last one gets the keyboard, too.
void WindowRequests::bringForward(const Scene& scene,
                                  std::span<const xcb_window_t> backToFront) const {
    for (const xcb_window_t window : backToFront) {
        if (scene.canRestack) {
            // Not every window manager raises what it gives the keyboard.
            ask(window, link_.atoms().restack, sourceUser, XCB_NONE, XCB_STACK_MODE_ABOVE);
        } else {
            // One that takes no such requests does, so each of them gets it in turn.
            focus(scene, window);
        }
    }
    if (scene.canRestack) {
        focus(scene, backToFront.back());
    }
}

/// With the present time: what the user has done before does not stand against it.
void WindowRequests::focus(const Scene& scene, xcb_window_t window) const {
    ask(window, link_.atoms().activeWindow, sourceUser, scene.time, XCB_NONE);
}

void WindowRequests::ask(xcb_window_t window, xcb_atom_t message, std::uint32_t a, std::uint32_t b,
                         std::uint32_t c) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = message;
    event.data.data32[0] = a;
    event.data.data32[1] = b;
    event.data.data32[2] = c;
    xcb_send_event(link_.get(), 0, link_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
}

} // namespace quillon
