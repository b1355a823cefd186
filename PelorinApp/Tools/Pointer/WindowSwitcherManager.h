#pragma once

#include "Tools/Edges/EdgeScrollManager.h"
#include "Tools/Pointer/ThreeFingerPress.h"
#include "Tools/Pointer/WindowCandidates.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <string_view>

namespace quillon {

/// The window switcher: scrolling at an armed edge brings the next application forward (positive
/// notches) or the previous one (negative notches). It also owns the three-finger press, which has
/// a switch of its own.
///
/// Its settings are in a store that is shared between programs, or in the standard one where that
/// cannot be opened.
class WindowSwitcherManager final : public EdgeScrollManager {
    Q_OBJECT
    Q_PROPERTY(double edgeScrollSteps READ edgeScrollSteps WRITE setEdgeScrollSteps NOTIFY
                   edgeScrollStepsChanged)
    Q_PROPERTY(bool threeFingerGestureEnabled READ threeFingerGestureEnabled WRITE
                   setThreeFingerGestureEnabled NOTIFY threeFingerGestureEnabledChanged)
    Q_PROPERTY(bool excludeXcode READ excludeXcode WRITE setExcludeXcode NOTIFY excludeXcodeChanged)
    Q_PROPERTY(QStringList excludedAppNames READ excludedAppNames WRITE setExcludedAppNames NOTIFY
                   excludedAppNamesChanged)
    Q_PROPERTY(QStringList detectedApps READ detectedApps NOTIFY detectedAppsChanged)

  public:
    static constexpr std::string_view toolId = "tool.windowSwitcher";

    /// The instance of the process, made on first use on the current platform.
    static WindowSwitcherManager& shared();
    static std::shared_ptr<WindowSwitcherManager> create(Platform& platform);

    WindowSwitcherManager(Platform& platform, std::shared_ptr<ThreeFingerTouchMonitor> monitor);
    ~WindowSwitcherManager() override { teardown(); }

    [[nodiscard]] double edgeScrollSteps() const { return notchesPerAction(); }
    [[nodiscard]] bool threeFingerGestureEnabled() const { return threeFingerGestureEnabled_; }
    [[nodiscard]] bool excludeXcode() const { return exclusions_.xcode; }
    [[nodiscard]] QStringList excludedAppNames() const { return exclusions_.names; }

    /// The names of the candidates of the last switch.
    [[nodiscard]] QStringList detectedApps() const { return detectedApps_; }

    /// Notches per switch; anything but a whole number of 1…10 is first made one.
    void setEdgeScrollSteps(double notches);

    /// Takes full effect at the next start.
    void setThreeFingerGestureEnabled(bool enabled);
    void setExcludeXcode(bool exclude);
    void setExcludedAppNames(const QStringList& names);

    void stopMonitoring() override;

    void switchToNextWindow();
    void switchToPreviousWindow();

    [[nodiscard]] std::optional<ProcessId> lastActivatedPID() const { return lastActivatedPID_; }
    [[nodiscard]] bool hasMouseTap() const { return threeFingerPress_.hasTap(); }

  Q_SIGNALS:
    void edgeScrollStepsChanged();
    void threeFingerGestureEnabledChanged();
    void excludeXcodeChanged();
    void excludedAppNamesChanged();
    void detectedAppsChanged();

  protected:
    /// They count on after a restart.
    void forgetNotches() override {}
    void positiveAction() override;
    void negativeAction() override;

    /// Refused without permission; otherwise the start comes from the main queue.
    void requestStart() override;
    void permissionGranted() override;

    /// A start does not ask for permission: who may not tap is refused the tap.
    [[nodiscard]] bool mayStart() const override { return true; }
    bool installSource() override;
    void removeSource() override;
    void healthTick() override;

  private:
    enum class Step { next, previous };
    void cycle(Step step);
    void publishDetectedApps(const std::vector<WindowCandidate>& candidates);
    void activate(const WindowCandidate& target);
    static void focusFirstWindow(Platform& platform, RunningApplication& application,
                                 const WindowCandidate& target);

    ThreeFingerPress threeFingerPress_;
    bool threeFingerGestureEnabled_;
    WindowExclusions exclusions_;
    QStringList detectedApps_;
    std::optional<ProcessId> lastActivatedPID_;
    std::size_t windowCycleIndex_ = 0;
};

} // namespace quillon
