#include "Platform/Simulated/SimulatedWindows.h"

#include <algorithm>
#include <utility>

namespace quillon {

class SimulatedWindows::Application final : public RunningApplication {
  public:
    Application(SimulatedWindows& windows, ProcessId process, RunningProcess facts)
        : windows_(windows), process_(process), facts_(std::move(facts)) {}

    [[nodiscard]] ProcessId processIdentifier() const override { return process_; }
    [[nodiscard]] std::optional<std::string> localizedName() const override { return facts_.name; }
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return facts_.policy; }
    void activate(ActivationOptions options) override { windows_.activate(process_, options); }

  private:
    SimulatedWindows& windows_;
    ProcessId process_;
    RunningProcess facts_;
};

class SimulatedWindows::WindowElement final : public AccessibilityElement {
  public:
    WindowElement(SimulatedWindows& windows, ProcessId process)
        : windows_(windows), process_(process) {}

    bool setBool(std::string_view attribute, bool value) override {
        if (attribute != "AXMain" || !windows_.processes_.contains(process_)) {
            return false;
        }
        windows_.sink_("main", std::to_string(process_) + (value ? "" : " off"));
        return true;
    }
    bool performAction(std::string_view action) override {
        if (action != "AXRaise" || !windows_.processes_.contains(process_)) {
            return false;
        }
        windows_.sink_("raise", std::to_string(process_));
        return true;
    }

  private:
    SimulatedWindows& windows_;
    ProcessId process_;
};

class SimulatedWindows::ApplicationElement final : public AccessibilityElement {
  public:
    ApplicationElement(SimulatedWindows& windows, ProcessId process)
        : windows_(windows), process_(process) {}

    std::optional<std::vector<AccessibilityElementRef>>
    elements(std::string_view attribute) override {
        if (attribute != "AXWindows" || !windows_.answersAssistance ||
            !windows_.processes_.contains(process_)) {
            return std::nullopt;
        }
        std::vector<AccessibilityElementRef> found;
        for (const WindowDescription& window : windows_.windows_) {
            if (window.ownerProcess == process_) {
                found.push_back(std::make_shared<WindowElement>(windows_, process_));
            }
        }
        return found;
    }
    bool setElement(std::string_view attribute, const AccessibilityElementRef& value) override {
        if (attribute != "AXFocusedWindow" || value == nullptr ||
            !windows_.processes_.contains(process_)) {
            return false;
        }
        windows_.sink_("focus", std::to_string(process_));
        return true;
    }

  private:
    SimulatedWindows& windows_;
    ProcessId process_;
};

void SimulatedWindows::add(const WindowDescription& window, ActivationPolicy policy) {
    windows_.push_back(window);
    if (window.ownerProcess) {
        RunningProcess& process = processes_[*window.ownerProcess];
        process.name = window.ownerName;
        if (policy != ActivationPolicy::regular) {
            process.policy = policy;
        }
    }
}

void SimulatedWindows::addInFront(const WindowDescription& window, ActivationPolicy policy) {
    add(window, policy);
    std::rotate(windows_.begin(), windows_.end() - 1, windows_.end());
    front_ = window.ownerProcess;
}

void SimulatedWindows::setFront(ProcessId process, std::optional<std::string> name) {
    front_ = process;
    RunningProcess& facts = processes_[process];
    if (name) {
        facts.name = std::move(name);
    }
}

void SimulatedWindows::close(ProcessId process) {
    processes_.erase(process);
    std::erase_if(windows_, [&](const auto& window) { return window.ownerProcess == process; });
    if (front_ == process) {
        front_.reset();
    }
}

RunningApplicationRef SimulatedWindows::frontmostApplication() {
    if (front_) {
        return runningApplication(*front_);
    }
    const auto owned = std::find_if(windows_.begin(), windows_.end(), [](const auto& window) {
        return window.ownerProcess.has_value();
    });
    return owned == windows_.end() ? nullptr : runningApplication(*owned->ownerProcess);
}

RunningApplicationRef SimulatedWindows::runningApplication(ProcessId process) {
    const auto found = processes_.find(process);
    return found == processes_.end() ? nullptr
                                     : std::make_shared<Application>(*this, process, found->second);
}

std::optional<std::vector<WindowDescription>>
SimulatedWindows::copyWindowList(WindowListOptions /*options*/) {
    return hasWindowList ? std::optional(windows_) : std::nullopt;
}

AccessibilityElementRef SimulatedWindows::application(ProcessId process) {
    return std::make_shared<ApplicationElement>(*this, process);
}

void SimulatedWindows::activate(ProcessId process, ActivationOptions options) {
    sink_("activate", std::to_string(process) +
                          " options=" + std::to_string(static_cast<std::uint32_t>(options)));
    if (!processes_.contains(process)) {
        return;
    }
    front_ = process;
    std::stable_partition(windows_.begin(), windows_.end(),
                          [&](const auto& window) { return window.ownerProcess == process; });
}

} // namespace quillon
