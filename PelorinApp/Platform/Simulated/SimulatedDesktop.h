#pragma once

#include "Platform/Platform.h"
#include "Platform/Simulated/ActionSink.h"
#include "Platform/Simulated/SimulatedAudioHardware.h"
#include "Platform/Simulated/SimulatedEventMonitors.h"
#include "Platform/Simulated/SimulatedEventServices.h"
#include "Platform/Simulated/SimulatedFileManager.h"
#include "Platform/Simulated/SimulatedShell.h"
#include "Platform/Simulated/SimulatedStatusBar.h"
#include "Platform/Simulated/SimulatedTouchLibrary.h"
#include "Platform/Simulated/SimulatedUrlSession.h"
#include "Platform/Simulated/SimulatedUserDefaults.h"
#include "Platform/Simulated/SimulatedWindows.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

class SimulatedDisplays final : public Displays {
  public:
    [[nodiscard]] Point mouseLocation() const override { return pointer; }
    [[nodiscard]] std::span<const Rect> screens() const override { return frames; }

    std::vector<Rect> frames{Rect{0, 0, 1440, 900}};
    Point pointer{720, 450};
};

class SimulatedAccessibility final : public Accessibility {
  public:
    [[nodiscard]] bool isProcessTrusted() override {
        ++queries;
        return trusted;
    }

    bool trusted = true;
    int queries = 0;
};

/// Reports each script that runs.
class SimulatedScripting final : public ScriptingService {
  public:
    explicit SimulatedScripting(ActionSink sink) : sink_(std::move(sink)) {}
    [[nodiscard]] std::unique_ptr<Script> compile(std::string_view source) override;

    bool compiles = true;
    std::optional<std::string> failure; // what later scripts fail with

  private:
    class SimulatedScript;
    ActionSink sink_;
};

class SimulatedBundle final : public Bundle {
  public:
    [[nodiscard]] std::string identifier() const override { return "com.pelorin.PelorinApp"; }
    [[nodiscard]] std::optional<std::string> infoString(std::string_view key) const override;

    std::map<std::string, std::string, std::less<>> info;
};

class SimulatedDiagnostics final : public Diagnostics {
  public:
    explicit SimulatedDiagnostics(ActionSink sink) : sink_(std::move(sink)) {}
    void line(std::string_view text) override { sink_("log", std::string(text)); }

  private:
    ActionSink sink_;
};

/// A whole desktop in memory: the services that a tool sees, and the handles that a test or trace
/// moves. It starts with one screen of 1440 × 900 points, the pointer in its centre, trusted.
class SimulatedDesktop {
  public:
    explicit SimulatedDesktop(const ActionSink& sink = [](std::string_view, const std::string&) {});

    /// Queued work may own what uses the services, so it goes while they are still there.
    ~SimulatedDesktop() { runLoop.discardQueued(); }
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;

    VirtualRunLoop runLoop;
    SimulatedEventServices events;
    SimulatedDisplays displays;
    SimulatedAccessibility accessibility;
    SimulatedScripting scripting;
    SimulatedUserDefaultsStores userDefaults;
    SimulatedBundle bundle;
    SimulatedDiagnostics diagnostics;
    SimulatedEventMonitors monitors;
    SimulatedWindows windows;
    SimulatedTouchLibrary touchLibrary;
    SimulatedAudioHardware audio;
    SimulatedUrlSession urls{runLoop};
    SimulatedFileManager files;
    SimulatedApplication application;
    SimulatedStatusBar statusBar;
    SimulatedImages images;
    SimulatedAnimator animator{runLoop};
    SimulatedPopovers popovers;
    SimulatedMenus menus;
    SimulatedAlerts alerts;
    SimulatedLoginItem loginItem;
    SimulatedUpdaters updaters;
    SimulatedWorkspace workspace;
    Platform platform;
};

} // namespace quillon
