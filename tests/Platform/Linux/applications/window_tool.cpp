// Asks the services for windows what it is told to, to be judged from outside. Reads commands, a
// line each, and answers each with a line of JSON:
//
//   list                  the windows, front to back
//   front                 the front application, or null
//   running PID           the application, or null; it is kept, and replaces one that was kept
//   activate PID OPTIONS  the one that was kept
//   windows PID           how many windows the application's element has, or null; they are kept
//   focus | main | raise PID INDEX    one of those
//   bring PID             what a switch to an application does, the later part 0.1 s later
//   measure COUNT PID...  microseconds from the beginning of a switch to its request, so many
//                         times, to each of these in turn
#include "Platform/Linux/applications/LinuxWindows.h"
#include "Platform/Linux/session/QtRunLoop.h"
#include "Platform/Linux/x11/X11Session.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <thread>

namespace quillon {
namespace {

using Json = nlohmann::json;
using Clock = std::chrono::steady_clock;

constexpr ActivationOptions everything =
    ActivationOptions::allWindows | ActivationOptions::ignoringOtherApps;

/// From one switch to the next that is measured: what the window manager still does about the one
/// must not count for the other.
constexpr std::chrono::milliseconds handsPace{60};

class Silence final : public Diagnostics {
  public:
    void line(std::string_view /*text*/) override {}
};

template <class Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

Json described(const WindowDescription& window) {
    Json bounds;
    if (window.bounds) {
        bounds = {window.bounds->x, window.bounds->y, window.bounds->width, window.bounds->height};
    }
    return {{"process", orNull(window.ownerProcess)},
            {"name", orNull(window.ownerName)},
            {"layer", orNull(window.layer)},
            {"bounds", bounds},
            {"on screen", orNull(window.isOnScreen)}};
}

Json described(const RunningApplicationRef& application) {
    if (!application) {
        return {};
    }
    return {{"process", application->processIdentifier()},
            {"name", orNull(application->localizedName())},
            {"regular", application->activationPolicy() == ActivationPolicy::regular}};
}

class Tool {
  public:
    explicit Tool(QtRunLoop& runLoop) : runLoop_(runLoop), windows_(runLoop, displays_) {
        [[maybe_unused]] const bool isTrusted = session_.isProcessTrusted();
    }

    Json answer(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        ProcessId process = 0;
        words >> command;
        if (command == "list") {
            return list();
        }
        if (command == "front") {
            return described(windows_.frontmostApplication());
        }
        if (command == "measure") {
            return measure(words);
        }
        words >> process;
        if (command == "running") {
            return described(kept_[process] = windows_.runningApplication(process));
        }
        if (command == "activate") {
            std::uint32_t options = 0;
            words >> options;
            kept_.at(process)->activate(static_cast<ActivationOptions>(options));
            return true;
        }
        if (command == "bring") {
            return bring(process);
        }
        const auto element = windows_.application(process);
        if (command == "windows") {
            const auto found = element->elements("AXWindows");
            elements_[process] = found.value_or(std::vector<AccessibilityElementRef>{});
            return found ? Json(found->size()) : Json();
        }
        std::size_t index = 0;
        words >> index;
        const auto& window = elements_.at(process).at(index);
        if (command == "focus") {
            return element->setElement("AXFocusedWindow", window);
        }
        return command == "main" ? window->setBool("AXMain", true)
                                 : window->performAction("AXRaise");
    }

  private:
    Json list() {
        const auto windows = windows_.copyWindowList(WindowListOptions::excludeDesktopElements);
        if (!windows) {
            return {};
        }
        Json all = Json::array();
        for (const auto& window : *windows) {
            all.push_back(described(window));
        }
        return all;
    }

    Json bring(ProcessId process) {
        const auto application = windows_.runningApplication(process);
        if (!application) {
            return false;
        }
        application->activate(everything);
        runLoop_.asyncAfter(0.1, [this, process, application] {
            const auto element = windows_.application(process);
            const auto found = element->elements("AXWindows");
            if (found && !found->empty()) {
                element->setElement("AXFocusedWindow", found->front());
                found->front()->setBool("AXMain", true);
                found->front()->performAction("AXRaise");
            }
            application->activate(ActivationOptions::ignoringOtherApps);
        });
        return true;
    }

    Json measure(std::istringstream& words) {
        std::size_t count = 0;
        words >> count;
        std::vector<ProcessId> targets;
        for (ProcessId target = 0; words >> target;) {
            targets.push_back(target);
        }
        std::vector<double> times;
        for (std::size_t i = 0; i < count; ++i) {
            const auto start = Clock::now();
            const auto windows = windows_.copyWindowList(WindowListOptions::excludeDesktopElements);
            for (const auto& window : windows.value_or(std::vector<WindowDescription>{})) {
                kept_[0] = windows_.runningApplication(*window.ownerProcess);
            }
            const auto front = windows_.frontmostApplication();
            if (const auto target = windows_.runningApplication(targets[i % targets.size()])) {
                target->activate(everything);
            }
            const std::chrono::duration<double, std::micro> taken = Clock::now() - start;
            times.push_back(taken.count());
            awaitFront(targets[i % targets.size()], Clock::now() + std::chrono::seconds(2));
            std::this_thread::sleep_until(start + handsPace);
        }
        return times;
    }

    /// Until the window manager has done what it was asked for.
    void awaitFront(ProcessId process, Clock::time_point deadline) {
        RunningApplicationRef front;
        do {
            QCoreApplication::processEvents();
            front = windows_.frontmostApplication();
        } while ((!front || front->processIdentifier() != process) && Clock::now() < deadline);
        QCoreApplication::processEvents();
    }

    QtRunLoop& runLoop_;
    Silence diagnostics_;
    X11Displays displays_;
    X11Session session_{diagnostics_, displays_, [] {}};
    LinuxWindows windows_;
    std::map<ProcessId, RunningApplicationRef> kept_;
    std::map<ProcessId, std::vector<AccessibilityElementRef>> elements_;
};

} // namespace
} // namespace quillon

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    quillon::QtRunLoop runLoop;
    quillon::Tool tool(runLoop);
    QSocketNotifier input(0, QSocketNotifier::Read);
    // Who asks waits for the answer, so there is never more than one line to be read.
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        std::string line;
        if (!std::getline(std::cin, line)) {
            runLoop.quit(0);
            return;
        }
        std::cout << tool.answer(line).dump() << std::endl;
    });
    const int status = runLoop.run();
    runLoop.finishBackground();
    return status;
}
