#include "Platform/Linux/applications/WindowSnapshot.h"

namespace quillon {

namespace {

/// What the program's tools know it by, whatever its windows say.
constexpr const char* ownName = "PelorinApp";

std::optional<std::string> nameOf(const WindowFacts& window, const ApplicationNames& names) {
    if (auto name = names.find(window.applicationId, window.instance, window.className)) {
        return name;
    }
    for (const std::string* name : {&window.className, &window.instance}) {
        if (!name->empty()) {
            return *name;
        }
    }
    return std::nullopt;
}

} // namespace

WindowSnapshot::WindowSnapshot(const DesktopFacts& facts, const ApplicationNames& names,
                               const Viewer& viewer) {
    windows_.reserve(facts.windows.size()); // or the applications' pointers would go astray
    for (const WindowFacts& window : facts.windows) {
        const auto owner = ownerProcess(window, viewer.machine);
        Window& listed = windows_.emplace_back(
            Window{.id = window.id,
                   .kind = window.kind,
                   .isMinimised = quillon::isMinimised(window.state, facts.currentDesktop),
                   .description = {
                       .ownerProcess = owner,
                       .ownerName = owner == viewer.process ? ownName : nameOf(window, names),
                       .layer = layerOf(window.kind),
                       .bounds = viewer.geometry == nullptr ? std::nullopt
                                                            : boundsOf(window, *viewer.geometry),
                       .isOnScreen = isOnScreen(window.state, facts.currentDesktop),
                   }});
        if (!owner) {
            continue;
        }
        Application& application = applications_[*owner];
        application.windows.push_back(&listed);
        if (!application.name ||
            (application.policy != ActivationPolicy::regular && hasTaskbarButton(window))) {
            application.name = listed.description.ownerName;
        }
        if (hasTaskbarButton(window)) {
            application.policy = ActivationPolicy::regular;
        }
    }
    findFront(facts);
}

const WindowSnapshot::Application* WindowSnapshot::application(ProcessId process) const {
    const auto found = applications_.find(process);
    return found == applications_.end() ? nullptr : &found->second;
}

void WindowSnapshot::findFront(const DesktopFacts& facts) {
    // It may be a window within a window, which only its connection tells the owner of.
    for (const bool exactly : {true, false}) {
        for (std::size_t i = 0; i < windows_.size(); ++i) {
            const bool isIt = exactly ? windows_[i].id == facts.frontWindow
                                      : facts.frontClient == facts.windows[i].client;
            if (isIt && windows_[i].description.ownerProcess) {
                front_ = windows_[i].description.ownerProcess;
                return;
            }
        }
    }
    // A window manager takes what is typed when nobody else does; it has no windows of its own.
    if (facts.frontProcess && application(*facts.frontProcess) != nullptr) {
        front_ = facts.frontProcess;
    }
}

} // namespace quillon
