#pragma once

#include "Platform/Platform.h"
#include "Tools/Edges/InputTap.h"

#include <QObject>

#include <memory>
#include <string_view>

namespace quillon {

/// Scroll reverse: flips the direction of every scroll, on trackpads and on mice independently. It
/// consumes nothing and knows no edges.
///
/// Main thread only. Whether it is on is not persisted here: somebody else remembers that.
class ScrollReverseManager final : public QObject,
                                   public std::enable_shared_from_this<ScrollReverseManager> {
    Q_OBJECT
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setIsEnabled NOTIFY isEnabledChanged)
    Q_PROPERTY(bool reverseTrackpad READ reverseTrackpad WRITE setReverseTrackpad NOTIFY
                   reverseTrackpadChanged)
    Q_PROPERTY(bool reverseMouse READ reverseMouse WRITE setReverseMouse NOTIFY reverseMouseChanged)
    Q_PROPERTY(bool hasAccessibilityPermission READ hasAccessibilityPermission NOTIFY
                   hasAccessibilityPermissionChanged)

  public:
    static constexpr std::string_view toolId = "tool.scrollReverse";

    /// The instance of the process, made on first use on the current platform.
    static ScrollReverseManager& shared();
    static std::shared_ptr<ScrollReverseManager> create(Platform& platform);

    explicit ScrollReverseManager(Platform& platform);
    ~ScrollReverseManager() override;

    [[nodiscard]] bool isEnabled() const { return isEnabled_; }
    [[nodiscard]] bool reverseTrackpad() const { return reverseTrackpad_; }
    [[nodiscard]] bool reverseMouse() const { return reverseMouse_; }
    [[nodiscard]] bool hasAccessibilityPermission() const { return hasAccessibilityPermission_; }

    void setIsEnabled(bool enabled);

    /// Each persists its value at once and takes effect with the next event.
    void setReverseTrackpad(bool reverse);
    void setReverseMouse(bool reverse);

    void startMonitoring();
    void stopMonitoring();

    void checkAccessibilityPermission();
    void applyPermissionResult(bool granted);

    /// What remains of construction once a shared pointer owns the object.
    void begin();

    [[nodiscard]] bool hasEventTap() const { return scrollTap_.exists(); }

    /// The scroll tap's callback; userInfo is the ScrollReverseManager. Allocates nothing.
    static Event* tapCallback(EventType type, Event* event, void* userInfo);

  Q_SIGNALS:
    void isEnabledChanged();
    void reverseTrackpadChanged();
    void reverseMouseChanged();
    void hasAccessibilityPermissionChanged();

  private:
    void setFlag(bool& flag, bool value, const char* key, void (ScrollReverseManager::*changed)());
    void setPermission(bool granted);
    void installTap();
    void reverse(Event& event) const;

    Platform& platform_;
    UserDefaults& defaults_;
    bool isEnabled_ = false;
    bool reverseTrackpad_;
    bool reverseMouse_;
    bool hasAccessibilityPermission_ = false;
    InputTap scrollTap_;
    TimerRef permissionCheckTimer_;
};

} // namespace quillon
