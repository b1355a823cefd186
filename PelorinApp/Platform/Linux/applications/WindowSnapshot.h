#pragma once

#include "Platform/Linux/applications/ApplicationNames.h"
#include "Platform/Linux/applications/WindowFacts.h"
#include "Platform/Linux/applications/WindowReader.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// The windows and their applications as they were at one moment. Immutable.
class WindowSnapshot {
  public:
    /// Of whom it is told.
    struct Viewer {
        ProcessId process;              // this one, which has a name of its own
        std::string machine;            // this one
        const ScreenGeometry* geometry; // null: no window has bounds
    };

    struct Window {
        xcb_window_t id;
        WindowKind kind;
        bool isMinimised;
        WindowDescription description;
    };

    struct Application {
        std::optional<std::string> name;
        ActivationPolicy policy = ActivationPolicy::accessory;
        std::vector<const Window*> windows; // front to back, also those that are not on the screen
    };

    WindowSnapshot(const DesktopFacts& facts, const ApplicationNames& names, const Viewer& viewer);
    WindowSnapshot(const WindowSnapshot&) = delete;
    WindowSnapshot& operator=(const WindowSnapshot&) = delete;
    ~WindowSnapshot() = default;

    /// Front to back.
    [[nodiscard]] const std::vector<Window>& windows() const { return windows_; }

    /// Null when no window is this process's.
    [[nodiscard]] const Application* application(ProcessId process) const;

    /// Whose application gets what is typed.
    [[nodiscard]] std::optional<ProcessId> front() const { return front_; }

  private:
    void findFront(const DesktopFacts& facts);

    std::vector<Window> windows_;
    std::map<ProcessId, Application> applications_;
    std::optional<ProcessId> front_;
};
using WindowSnapshotRef = std::shared_ptr<const WindowSnapshot>;

} // namespace quillon
