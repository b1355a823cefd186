#pragma once

#include "Platform/AccessibilityElement.h"
#include "Platform/Applications.h"
#include "Platform/Simulated/ActionSink.h"
#include "Platform/WindowServer.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// The applications of a simulated desktop and their windows. Bringing an application forward moves
/// its windows to the head of the list.
class SimulatedWindows final : public Applications,
                               public WindowServer,
                               public AccessibilityElements {
  public:
    explicit SimulatedWindows(ActionSink sink) : sink_(std::move(sink)) {}

    RunningApplicationRef frontmostApplication() override;
    RunningApplicationRef runningApplication(ProcessId process) override;
    std::optional<std::vector<WindowDescription>>
    copyWindowList(WindowListOptions options) override;
    [[nodiscard]] AccessibilityElementRef application(ProcessId process) override;

    /// A window behind all others; its owner becomes an application of this policy.
    void add(const WindowDescription& window, ActivationPolicy policy = ActivationPolicy::regular);

    /// The same in front of all others, which gets what is typed.
    void addInFront(const WindowDescription& window,
                    ActivationPolicy policy = ActivationPolicy::regular);

    /// This application is in front from now on, whether or not it has windows.
    void setFront(ProcessId process, std::optional<std::string> name);

    /// The application ends, and its windows go.
    void close(ProcessId process);

    /// The process is no application any more; its windows stay.
    void forget(ProcessId process) { processes_.erase(process); }

    bool hasWindowList = true;
    bool answersAssistance = true; // whether applications let their windows be read

  private:
    struct RunningProcess {
        std::optional<std::string> name;
        ActivationPolicy policy = ActivationPolicy::regular;
    };
    class Application;
    class ApplicationElement;
    class WindowElement;

    void activate(ProcessId process, ActivationOptions options);

    ActionSink sink_;
    std::map<ProcessId, RunningProcess> processes_;
    std::vector<WindowDescription> windows_; // front to back
    std::optional<ProcessId> front_;         // else the first window's owner
};

} // namespace quillon
