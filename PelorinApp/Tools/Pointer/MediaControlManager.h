#pragma once

#include "Tools/Edges/EdgeToolManager.h"
#include "Tools/Edges/InputMonitor.h"
#include "Tools/Uptime.h"

#include <memory>
#include <optional>
#include <string_view>

namespace quillon {

/// Media control: clicks at an armed edge, counted until a pause ends the burst. One toggles
/// play/pause, two go to the next track, three to the previous one. It only listens, so that the
/// clicks also reach what lies under the pointer.
///
/// A fresh installation is enabled with no edge armed: it does nothing until the user arms one.
class MediaControlManager final : public EdgeToolManager {
    Q_OBJECT
    Q_PROPERTY(bool middleButtonEnabled READ middleButtonEnabled WRITE setMiddleButtonEnabled NOTIFY
                   middleButtonEnabledChanged)
    Q_PROPERTY(bool leftButtonEnabled READ leftButtonEnabled WRITE setLeftButtonEnabled NOTIFY
                   leftButtonEnabledChanged)

  public:
    static constexpr std::string_view toolId = "tool.mediaControl";

    /// The instance of the process, made on first use on the current platform.
    static MediaControlManager& shared();
    static std::shared_ptr<MediaControlManager> create(Platform& platform) {
        return makeManager<MediaControlManager>(platform);
    }

    explicit MediaControlManager(Platform& platform);
    ~MediaControlManager() override { teardown(); }

    [[nodiscard]] bool middleButtonEnabled() const { return middleButtonEnabled_; }
    [[nodiscard]] bool leftButtonEnabled() const { return leftButtonEnabled_; }

    void setMiddleButtonEnabled(bool enabled);
    void setLeftButtonEnabled(bool enabled);

    void begin() override;

    /// Of the last button that was told of, counting or not.
    [[nodiscard]] std::optional<Moment> lastEventTime() const { return lastEventTime_; }

  Q_SIGNALS:
    void middleButtonEnabledChanged();
    void leftButtonEnabledChanged();

  protected:
    [[nodiscard]] bool hasSource() const override { return eventMonitor_.exists(); }
    [[nodiscard]] bool mayStart() const override;
    bool installSource() override;
    void removeSource() override;
    void bandChanged() override { eventMonitor_.setArmed(band().isArmed()); }
    void healthTick() override;

  private:
    void setButton(bool& button, bool enabled, const char* key,
                   void (MediaControlManager::*changed)());
    void handleButton(const MonitoredEvent& event);
    void click(Point place);
    [[nodiscard]] bool isDuplicate(Point place);
    [[nodiscard]] bool isAtArmedEdge(Point place) const;
    void endBurst();
    void act(int clicks);
    void log(std::string_view text) const { platform().diagnostics.line(text); }

    bool middleButtonEnabled_;
    bool leftButtonEnabled_;
    InputMonitor eventMonitor_;
    TimerRef clickTimer_;
    int clickCount_ = 0;
    std::optional<Moment> lastEventTime_;
    std::optional<Moment> lastClickTime_;
    Point lastClickPoint_;
};

} // namespace quillon
