#pragma once

#include "Platform/Platform.h"
#include "Tools/Edges/EdgeBand.h"
#include "Tools/MakeManager.h"
#include "Tools/Setting.h"

#include <QObject>

#include <memory>
#include <utility>

namespace quillon {

/// The settings that every edge tool has, and the points in which the tools' life cycles differ.
struct EdgeToolTraits {
    Setting<bool> isEnabled;
    Setting<double> edgeSensitivity;
    Setting<bool> leftEdge;
    Setting<bool> rightEdge;
    Setting<bool> topEdge;
    Setting<bool> bottomEdge;

    /// The health timer runs also when the tap or monitor could not be had, and so retries.
    bool healthTimerWithoutSource = false;
};

/// The life cycle of a tool that listens at the screen edges: settings, permission poll, start,
/// stop and health timer. A tool says what it listens through (installSource and its kin) and
/// overrides the steps in which it differs.
///
/// Main thread only. Objects are made by makeManager; timers and queued work hold them weakly.
class EdgeToolManager : public QObject, public std::enable_shared_from_this<EdgeToolManager> {
    Q_OBJECT
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setIsEnabled NOTIFY isEnabledChanged)
    Q_PROPERTY(double edgeSensitivity READ edgeSensitivity WRITE setEdgeSensitivity NOTIFY
                   edgeSensitivityChanged)
    Q_PROPERTY(bool leftEdgeEnabled READ leftEdgeEnabled WRITE setLeftEdgeEnabled NOTIFY
                   leftEdgeEnabledChanged)
    Q_PROPERTY(bool rightEdgeEnabled READ rightEdgeEnabled WRITE setRightEdgeEnabled NOTIFY
                   rightEdgeEnabledChanged)
    Q_PROPERTY(bool topEdgeEnabled READ topEdgeEnabled WRITE setTopEdgeEnabled NOTIFY
                   topEdgeEnabledChanged)
    Q_PROPERTY(bool bottomEdgeEnabled READ bottomEdgeEnabled WRITE setBottomEdgeEnabled NOTIFY
                   bottomEdgeEnabledChanged)
    Q_PROPERTY(bool hasAccessibilityPermission READ hasAccessibilityPermission NOTIFY
                   hasAccessibilityPermissionChanged)

  public:
    [[nodiscard]] bool isEnabled() const { return isEnabled_; }
    [[nodiscard]] double edgeSensitivity() const { return band_.width; }
    [[nodiscard]] bool leftEdgeEnabled() const { return band_.left; }
    [[nodiscard]] bool rightEdgeEnabled() const { return band_.right; }
    [[nodiscard]] bool topEdgeEnabled() const { return band_.top; }
    [[nodiscard]] bool bottomEdgeEnabled() const { return band_.bottom; }
    [[nodiscard]] bool hasAccessibilityPermission() const { return hasAccessibilityPermission_; }

    /// Each setter persists its value at once, also when it is the old one.
    void setIsEnabled(bool enabled);

    /// Off until the next start, or until somebody switches it on: nothing is persisted.
    void switchOffForNow();

    void setEdgeSensitivity(double points);
    void setLeftEdgeEnabled(bool enabled);
    void setRightEdgeEnabled(bool enabled);
    void setTopEdgeEnabled(bool enabled);
    void setBottomEdgeEnabled(bool enabled);

    void startMonitoring();
    virtual void stopMonitoring();

    /// Runs the trust query and applies its answer from the main queue.
    void checkAccessibilityPermission();
    virtual void applyPermissionResult(bool granted);

    /// Starts if that is wanted and allowed; with `force` anew, else only what has stopped.
    void restartIfNeeded(bool force);

    [[nodiscard]] bool isMouseAtEnabledEdge() const;

    /// What remains of construction once a shared pointer owns the object.
    virtual void begin();

  Q_SIGNALS:
    void isEnabledChanged();
    void edgeSensitivityChanged();
    void leftEdgeEnabledChanged();
    void rightEdgeEnabledChanged();
    void topEdgeEnabledChanged();
    void bottomEdgeEnabledChanged();
    void hasAccessibilityPermissionChanged();

  protected:
    EdgeToolManager(Platform& platform, UserDefaults& defaults, const EdgeToolTraits& traits);

    /// The tap or monitor that the tool listens through.
    [[nodiscard]] virtual bool hasSource() const = 0;
    virtual bool installSource() = 0;
    virtual void removeSource() = 0;

    /// The edges or the width of the band changed.
    virtual void bandChanged() {}

    /// How the tool starts by itself: when it is switched on, when permission comes, when its
    /// source has gone.
    virtual void requestStart() { startMonitoring(); }

    /// Permission has come that was not there before.
    virtual void permissionGranted();

    /// Whether a start may go ahead.
    [[nodiscard]] virtual bool mayStart() const { return hasAccessibilityPermission_; }

    virtual void healthTick();

    /// To be called by the destructor of the concrete tool, while its overrides still exist.
    void teardown();

    template <class T>
    void persist(const char* key, T value) {
        defaults_.set(key, std::move(value));
    }

    /// Sets and persists, the latter also when it is the old value. True when it is another.
    template <class T>
    bool assign(T& field, T value, const char* key) {
        const bool differs = std::exchange(field, value) != value;
        persist(key, value);
        return differs;
    }

    [[nodiscard]] Platform& platform() const { return platform_; }
    [[nodiscard]] UserDefaults& defaults() const { return defaults_; }
    [[nodiscard]] const EdgeBand& band() const { return band_; }

  private:
    template <class T>
    void setBandSetting(T& field, T value, const char* key, void (EdgeToolManager::*changed)());

    Platform& platform_;
    UserDefaults& defaults_;
    EdgeToolTraits traits_;

    bool isEnabled_;
    EdgeBand band_;
    bool hasAccessibilityPermission_ = false;
    TimerRef permissionCheckTimer_;
    TimerRef monitorCheckTimer_;
    bool isStartingMonitor_ = false;
};

} // namespace quillon
