#include "Platform/Linux/applications/LinuxWindows.h"

#include "Platform/Linux/applications/WindowReader.h"
#include "Platform/Linux/applications/WindowRequests.h"

#include <algorithm>
#include <array>
#include <utility>

#include <unistd.h>

namespace quillon {

namespace {

std::string thisMachine() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

/// Those that come forward with their application, and can have the keyboard.
bool comesForward(const WindowSnapshot::Window& window) {
    return window.kind == WindowKind::ordinary || window.kind == WindowKind::palette;
}

} // namespace

class LinuxWindows::RunningOne final : public RunningApplication {
  public:
    RunningOne(std::weak_ptr<LinuxWindows*> windows, ProcessId process, WindowSnapshotRef snapshot,
               const WindowSnapshot::Application& facts)
        : windows_(std::move(windows)), process_(process), snapshot_(std::move(snapshot)),
          facts_(facts) {}

    [[nodiscard]] ProcessId processIdentifier() const override { return process_; }
    [[nodiscard]] std::optional<std::string> localizedName() const override { return facts_.name; }
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return facts_.policy; }

    void activate(ActivationOptions options) override {
        const auto windows = windows_.lock();
        if (!windows) {
            return;
        }
        const bool all = (static_cast<std::uint32_t>(options) &
                          static_cast<std::uint32_t>(ActivationOptions::allWindows)) != 0;
        std::vector<xcb_window_t> ordinary;
        std::vector<xcb_window_t> every;
        for (const WindowSnapshot::Window* window : facts_.windows) {
            if (window->kind == WindowKind::ordinary) {
                ordinary.push_back(window->id);
            }
            if (comesForward(*window)) {
                every.push_back(window->id);
            }
        }
        const std::vector<xcb_window_t> none;
        (*windows)->activate(ordinary.empty() ? every : ordinary, all ? every : none);
    }

  private:
    std::weak_ptr<LinuxWindows*> windows_;
    ProcessId process_;
    WindowSnapshotRef snapshot_;
    const WindowSnapshot::Application& facts_; // of the snapshot
};

class LinuxWindows::WindowElement final : public AccessibilityElement {
  public:
    WindowElement(std::weak_ptr<LinuxWindows*> windows, ProcessId process, xcb_window_t window)
        : windows_(std::move(windows)), process_(process), window_(window) {}

    [[nodiscard]] ProcessId process() const { return process_; }

    /// The main window of an application is the one that comes to mind first: the front-most.
    bool setBool(std::string_view attribute, bool value) override {
        return attribute == "AXMain" && value && raise();
    }
    bool performAction(std::string_view action) override { return action == "AXRaise" && raise(); }

    bool focus() {
        const auto windows = windows_.lock();
        return windows && (*windows)->activate({&window_, 1}, {});
    }

  private:
    bool raise() {
        const auto windows = windows_.lock();
        return windows && (*windows)->raise(window_);
    }

    std::weak_ptr<LinuxWindows*> windows_;
    ProcessId process_;
    xcb_window_t window_;
};

class LinuxWindows::ApplicationElement final : public AccessibilityElement {
  public:
    ApplicationElement(std::weak_ptr<LinuxWindows*> windows, ProcessId process)
        : windows_(std::move(windows)), process_(process) {}

    std::optional<std::vector<AccessibilityElementRef>>
    elements(std::string_view attribute) override {
        const auto windows = windows_.lock();
        const auto snapshot =
            windows && attribute == "AXWindows" ? (*windows)->snapshot() : nullptr;
        const auto* application = snapshot ? snapshot->application(process_) : nullptr;
        if (application == nullptr) {
            return std::nullopt;
        }
        // Those that can be seen come first, and those that the user has put away not at all.
        std::vector<AccessibilityElementRef> found;
        for (const bool onScreen : {true, false}) {
            for (const WindowSnapshot::Window* window : application->windows) {
                if (window->kind == WindowKind::ordinary && !window->isMinimised &&
                    window->description.isOnScreen == onScreen) {
                    found.push_back(
                        std::make_shared<WindowElement>(windows_, process_, window->id));
                }
            }
        }
        return found;
    }
    bool setElement(std::string_view attribute, const AccessibilityElementRef& value) override {
        const auto window = std::dynamic_pointer_cast<WindowElement>(value);
        return attribute == "AXFocusedWindow" && window && window->process() == process_ &&
               window->focus();
    }

  private:
    std::weak_ptr<LinuxWindows*> windows_;
    ProcessId process_;
};

LinuxWindows::LinuxWindows(RunLoop& runLoop, const X11Displays& displays)
    : runLoop_(runLoop), displays_(displays), installed_(runLoop, applicationFolders()),
      self_(std::make_shared<LinuxWindows*>(this)) {}

RunningApplicationRef LinuxWindows::frontmostApplication() {
    const auto now = snapshot();
    return now && now->front() ? runningApplication(*now->front()) : nullptr;
}

RunningApplicationRef LinuxWindows::runningApplication(ProcessId process) {
    const auto now = snapshot();
    const auto* application = now ? now->application(process) : nullptr;
    return application == nullptr ? nullptr
                                  : std::make_shared<RunningOne>(self_, process, now, *application);
}

std::optional<std::vector<WindowDescription>>
LinuxWindows::copyWindowList(WindowListOptions options) {
    const auto now = snapshot();
    if (!now) {
        return std::nullopt;
    }
    const bool wantsDesktop =
        (static_cast<std::uint32_t>(options) &
         static_cast<std::uint32_t>(WindowListOptions::excludeDesktopElements)) == 0;
    std::vector<WindowDescription> list;
    list.reserve(now->windows().size());
    for (const WindowSnapshot::Window& window : now->windows()) {
        if (wantsDesktop || window.kind != WindowKind::desktop) {
            list.push_back(window.description);
        }
    }
    return list;
}

AccessibilityElementRef LinuxWindows::application(ProcessId process) {
    return std::make_shared<ApplicationElement>(self_, process);
}

bool LinuxWindows::connect() {
    if (!link_ || link_->isBroken()) {
        snapshot_.reset();
        link_ = WindowLink::open();
    }
    return link_ != nullptr;
}

WindowSnapshotRef LinuxWindows::snapshot() {
    if (!connect() || snapshot_) {
        return snapshot_;
    }
    const auto facts = readDesktop(*link_);
    if (!facts) {
        return nullptr;
    }
    const auto geometry = displays_.geometry();
    snapshot_ = std::make_shared<const WindowSnapshot>(
        *facts, *installed_.names(),
        WindowSnapshot::Viewer{::getpid(), thisMachine(), geometry.get()});
    installed_.lookAgain();
    runLoop_.async([weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock()) {
            (*self)->snapshot_.reset();
        }
    });
    return snapshot_;
}

bool LinuxWindows::activate(std::span<const xcb_window_t> windows,
                            std::span<const xcb_window_t> companions) {
    if (windows.empty() || !connect()) {
        return false;
    }
    snapshot_.reset();
    return WindowRequests(*link_).activate(windows, companions);
}

bool LinuxWindows::raise(xcb_window_t window) {
    if (!connect()) {
        return false;
    }
    snapshot_.reset();
    return WindowRequests(*link_).raise(window);
}

} // namespace quillon
