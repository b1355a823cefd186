#pragma once

#include "Platform/Applications.h"
#include "Platform/Geometry.h"
#include "Platform/Simulated/SimulatedAudioHardware.h"
#include "Platform/Simulated/VirtualRunLoop.h"
#include "Platform/UserDefaults.h"

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillon {

/// A place in a trace's text. Both count from 1; a column is one character, not one byte.
struct TracePosition {
    int line = 1;
    int column = 1;
    bool operator==(const TracePosition&) const = default;
};

struct TraceError {
    TracePosition position;
    std::string message;
};

/// The tools that a trace may name, whether or not this build has them.
inline constexpr std::array<std::string_view, 6> toolIds{
    "tool.windowSwitcher",  "tool.mediaControl",  "tool.trackpadMiddleClick",
    "tool.desktopSwitcher", "tool.volumeControl", "tool.scrollReverse",
};

struct ToolName {
    std::string id;
    TracePosition position;
};

struct StoredDefault {
    std::string suite; // empty: the standard store
    std::string key;
    DefaultsObject object;
};

struct TraceWindow {
    ProcessId owner = 0;
    std::string ownerName;
    Rect frame;
    int layer = 0;
    bool onScreen = true;
    bool accessory = false;
};

struct FrontApplication {
    ProcessId process = 0;
    std::optional<std::string> name;
};

using OutputDevice = SimulatedAudioHardware::OutputDevice;

struct DeviceChange {
    std::optional<OutputDevice> device;
};

struct TrustAnswer {
    bool granted = true;
};

struct RestingContacts {
    int count = 0;
};

/// On or off through the tool's module, which also makes the tool an installed one.
struct ToolSwitch {
    ToolName tool;
    bool on = true;
};

struct PointerMove {
    Point to;
};

/// A scroll as a wheel or a trackpad reports it; the names are those of the event's fields.
struct ScrollInput {
    double lineDeltaAxis1 = 0;
    double lineDeltaAxis2 = 0;
    double fixedPointDeltaAxis1 = 0;
    double fixedPointDeltaAxis2 = 0;
    double pointDeltaAxis1 = 0;
    double pointDeltaAxis2 = 0;
    bool isContinuous = false;
    int phase = 0;
    int momentumPhase = 0;
};

struct ButtonInput {
    MouseButton button = MouseButton::left;
    bool pressed = true;
};

struct TapsDisabled {
    bool byUser = false; // else by time-out
};

struct TapGrants {
    bool allowed = true;
};

struct TapDrop {
    ToolName tool;
};

struct ScriptFailure {
    std::string description;
};

struct ApplicationEnd {
    ProcessId process = 0;
};

struct PropertyChange {
    ToolName tool;
    std::string property;
    TracePosition propertyPosition;
    DefaultsObject value;
    TracePosition valuePosition;
};

using TraceAction =
    std::variant<PointerMove, ScrollInput, ButtonInput, TapsDisabled, TapGrants, TapDrop,
                 ScriptFailure, TrustAnswer, RestingContacts, DeviceChange, FrontApplication,
                 TraceWindow, ApplicationEnd, PropertyChange, ToolSwitch>;

struct TimedAction {
    VirtualRunLoop::Microseconds time = 0;
    TraceAction action;
};

/// Kinds of action, the first word after an output line's time.
inline constexpr std::array<std::string_view, 13> actionKinds{
    "consume", "rewrite", "pass", "script", "activate", "raise", "volume",
    "unmute",  "level",   "key",  "click",  "tap",      "log",
};
using ShownKinds = std::set<std::string, std::less<>>;

/// The output that the trace's author expects.
struct ExpectedOutput {
    int firstLine = 1; // in the trace's text
    std::vector<std::string> lines;
};

struct Trace {
    std::vector<StoredDefault> defaults;
    std::vector<Rect> screens; // the main screen first; empty: the desktop's own
    bool trusted = true;
    std::vector<TraceWindow> windows; // front to back
    std::optional<FrontApplication> front;
    std::optional<OutputDevice> device = OutputDevice{};
    int contacts = 0;
    std::vector<ToolSwitch> tools;
    ShownKinds shown;

    std::vector<TimedAction> actions;
    VirtualRunLoop::Microseconds end = 0; // inclusive
    std::optional<ExpectedOutput> expected;
};

} // namespace quillon
