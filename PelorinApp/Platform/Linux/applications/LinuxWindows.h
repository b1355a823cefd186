#pragma once

#include "Platform/AccessibilityElement.h"
#include "Platform/Applications.h"
#include "Platform/Linux/applications/InstalledApplications.h"
#include "Platform/Linux/applications/WindowLink.h"
#include "Platform/Linux/applications/WindowSnapshot.h"
#include "Platform/Linux/x11/X11Displays.h"
#include "Platform/RunLoop.h"
#include "Platform/WindowServer.h"

#include <memory>
#include <span>
#include <vector>

namespace quillon {

/// The windows of all programs and the applications that they belong to, as the X server and the
/// window manager know them. Applications themselves are never asked, and so never waited for.
///
/// An application is a process that has windows. It is regular when a taskbar shows one of them.
///
/// Main thread only. What is read is good until control returns to the run loop, or something is
/// changed here. Without a server there is nothing; one that comes later is found.
class LinuxWindows final : public Applications, public WindowServer, public AccessibilityElements {
  public:
    LinuxWindows(RunLoop& runLoop, const X11Displays& displays);
    LinuxWindows(const LinuxWindows&) = delete;
    LinuxWindows& operator=(const LinuxWindows&) = delete;
    ~LinuxWindows() override = default;

    RunningApplicationRef frontmostApplication() override;
    RunningApplicationRef runningApplication(ProcessId process) override;
    std::optional<std::vector<WindowDescription>>
    copyWindowList(WindowListOptions options) override;
    [[nodiscard]] AccessibilityElementRef application(ProcessId process) override;

  private:
    class RunningOne;
    class ApplicationElement;
    class WindowElement;

    [[nodiscard]] bool connect();
    [[nodiscard]] WindowSnapshotRef snapshot(); // null when there is none to be had
    bool activate(std::span<const xcb_window_t> windows, std::span<const xcb_window_t> companions);
    bool raise(xcb_window_t window);

    RunLoop& runLoop_;
    const X11Displays& displays_;
    InstalledApplications installed_;
    std::unique_ptr<WindowLink> link_;
    WindowSnapshotRef snapshot_;
    std::shared_ptr<LinuxWindows*> self_; // what is handed out may outlive it
};

} // namespace quillon
