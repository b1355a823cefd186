#include "Tools/Edges/Tool4EdgesManager.h"

#include <string>

namespace quillon {

namespace {

constexpr EdgeToolTraits desktopTraits{
    .isEnabled = {"Tool4EnabledState", true},
    .edgeSensitivity = {"Tool4EdgeSensitivity", 40.0},
    .leftEdge = {"Tool4LeftEdge", false},
    .rightEdge = {"Tool4RightEdge", false},
    .topEdge = {"Tool4TopEdge", false},
    .bottomEdge = {"Tool4BottomEdge", false},
};
constexpr Setting<double> tool4ScrollSensitivitySetting{"Tool4ScrollSensitivity", 4.0};

// Control + left and right arrow: the system's own shortcuts for the neighbouring desktops.
constexpr std::string_view previousDesktopScript =
    "tell application \"System Events\" to key code 123 using {control down}";
constexpr std::string_view nextDesktopScript =
    "tell application \"System Events\" to key code 124 using {control down}";

} // namespace

Tool4EdgesManager& Tool4EdgesManager::shared() {
    // Never destroyed: it lives as long as the process, the platform no longer than main.
    static const auto& instance =
        *new std::shared_ptr<Tool4EdgesManager>(create(Platform::current()));
    return *instance;
}

Tool4EdgesManager::Tool4EdgesManager(Platform& platform)
    : EdgeScrollManager(
          platform, platform.userDefaults.standard(), desktopTraits, toolId,
          tool4ScrollSensitivitySetting.key,
          doubleForKey(platform.userDefaults.standard(), tool4ScrollSensitivitySetting.key,
                       tool4ScrollSensitivitySetting.fallback, platform.diagnostics)) {}

void Tool4EdgesManager::setScrollSensitivity(double notches) {
    if (setNotchesPerAction(notches)) {
        Q_EMIT scrollSensitivityChanged();
    }
}

void Tool4EdgesManager::switchToPreviousDesktop() { queueAppleScript(previousDesktopScript); }

void Tool4EdgesManager::switchToNextDesktop() { queueAppleScript(nextDesktopScript); }

void Tool4EdgesManager::queueAppleScript(std::string_view source) {
    // Only the question whether the manager still exists crosses threads; what the work uses
    // belongs to the platform, so that the manager never dies on a background thread.
    platform().runLoop.asyncBackground([owner = weak_from_this(), source,
                                        &scripting = platform().scripting,
                                        &diagnostics = platform().diagnostics] {
        if (!owner.expired()) {
            runAppleScript(source, scripting, diagnostics);
        }
    });
}

void Tool4EdgesManager::runAppleScript(std::string_view source, ScriptingService& scripting,
                                       Diagnostics& diagnostics) {
    const std::unique_ptr<Script> script = scripting.compile(source);
    if (!script) {
        return;
    }
    if (const auto error = script->execute()) {
        diagnostics.line("AppleScript error: " + *error);
    }
}

} // namespace quillon
