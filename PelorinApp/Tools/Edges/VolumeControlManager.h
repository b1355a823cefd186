#pragma once

#include "Tools/Edges/EdgeToolManager.h"
#include "Tools/Edges/InputMonitor.h"
#include "Tools/Edges/VolumeStep.h"
#include "Tools/Uptime.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace quillon {

/// The volume control: each scroll at an armed edge, however far, is one step of the output volume.
/// It only listens, so that what lies under the pointer scrolls as well.
///
/// A fresh installation is enabled with no edge armed: it does nothing until the user arms one.
class VolumeControlManager final : public EdgeToolManager {
    Q_OBJECT
    Q_PROPERTY(double volumeSteps READ volumeSteps WRITE setVolumeSteps NOTIFY volumeStepsChanged)
    Q_PROPERTY(double scrollSensitivity READ scrollSensitivity WRITE setScrollSensitivity NOTIFY
                   scrollSensitivityChanged)

  public:
    static constexpr std::string_view toolId = "tool.volumeControl";

    /// The instance of the process, made on first use on the current platform.
    static VolumeControlManager& shared();
    static std::shared_ptr<VolumeControlManager> create(Platform& platform) {
        return makeManager<VolumeControlManager>(platform);
    }

    explicit VolumeControlManager(Platform& platform);
    ~VolumeControlManager() override { teardown(); }

    [[nodiscard]] double volumeSteps() const { return volumeSteps_; }

    /// As a step uses it: a whole number of 1…10.
    [[nodiscard]] std::int64_t clampedVolumeSteps() const;

    /// As it was stored; nothing here depends on it.
    [[nodiscard]] double scrollSensitivity() const { return scrollSensitivity_; }

    /// Persisted as it is.
    void setVolumeSteps(double steps);

    /// Not persisted.
    void setScrollSensitivity(double sensitivity);

    /// Who shows the levels that the tool sets; nobody at first. Called on any thread.
    void setLevelReport(VolumeLevelReport report) { levelReport_ = std::move(report); }

    void stopMonitoring() override;

    /// One step, here and now: may wait for the sound system.
    void adjustVolume(bool up) const { step().run(up); }

    [[nodiscard]] bool hasEventMonitor() const { return eventMonitor_.exists(); }

  Q_SIGNALS:
    void volumeStepsChanged();
    void scrollSensitivityChanged();

  protected:
    [[nodiscard]] bool hasSource() const override { return eventMonitor_.exists(); }
    bool installSource() override;
    void removeSource() override { eventMonitor_.remove(); }
    void bandChanged() override { eventMonitor_.setArmed(band().isArmed()); }

  private:
    void handleScroll(const MonitoredEvent& event);
    [[nodiscard]] VolumeStep step() const;

    double volumeSteps_;
    double scrollSensitivity_;
    InputMonitor eventMonitor_;
    VolumeLevelReport levelReport_ = [](float) {};
    std::optional<Moment> lastVolumeAdjustmentTime_; // nothing: long ago
};

} // namespace quillon
