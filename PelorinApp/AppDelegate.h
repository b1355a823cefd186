#pragma once

#include "Platform/Platform.h"
#include "VolumeBarMenuBarButton.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillon {

/// The program's shell: the status item and its icon, the popover with the hub, the context menu,
/// the watch for clicks outside, and the volume level that now and then takes the icon's place.
///
/// Main thread only, but for showVolumeLevel. What outlives a call holds the delegate weakly.
class AppDelegate final : public ApplicationDelegate,
                          public UpdaterDelegate,
                          public std::enable_shared_from_this<AppDelegate> {
  public:
    /// `startToolHub` is the last step of the launch: it brings up the tools. `endToolHub` is
    /// called when the program ends, also when the launch did not get so far.
    static std::shared_ptr<AppDelegate> create(Platform& platform,
                                               std::function<void()> startToolHub,
                                               std::function<void()> endToolHub);

    /// Any thread. Shows the output volume (percent, nominally 0…100) in the running delegate's
    /// status item, soon; without one nothing happens.
    static void showVolumeLevel(float percent);

    void applicationDidFinishLaunching() override;
    void applicationDidBecomeActive() override;
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() override;
    void applicationShouldHandleReopen() override;
    void applicationWillTerminate() override;
    [[nodiscard]] std::optional<std::string> feedURLStringForUpdater() override;

    // What the button and the menu send.
    void statusBarButtonPressed(Sender* sender);
    void togglePopover(Sender* sender);
    void checkForUpdates(Sender* sender);
    void toggleLaunchAtLogin(Sender* sender);
    void openSupport();
    void quitFromStatusMenu(Sender* sender);

    /// For the current event, or under the status item when something else asked for it.
    void showContextMenu();

  private:
    AppDelegate(Platform& platform, std::function<void()> startToolHub,
                std::function<void()> endToolHub);

    // AppDelegate.cpp: launch, icon and button
    [[nodiscard]] bool createStatusItem();
    void createPopover();
    void watchForOutsideClicks();
    void listenForOutsideClicks(bool listen);
    UpdaterController& updaterController();
    void applyIcon(Button& button);
    void setUpButton(Button& button);
    [[nodiscard]] Action action(std::string name, void (AppDelegate::*perform)(Sender*));
    void measureDisplayWidth(const View& view);

    // AppDelegatePopover.cpp: clicks
    [[nodiscard]] std::shared_ptr<View> statusItemView() const;
    [[nodiscard]] const View* anchorView(Sender* sender) const;
    void showPopover(const View& anchor);
    void closePopoverAfterOutsideClick();
    [[nodiscard]] bool pointerIsInStatusItem() const;

    // AppDelegateMenu.cpp
    [[nodiscard]] std::shared_ptr<Menu> contextMenu();

    // AppDelegateVolumeLevel.cpp
    void acceptVolumePercent(float percent);
    void flushQueuedVolumePercent();
    void clearVolumeQueue();
    void presentVolumePercent(float percent);
    void updateVolumeLevel(float percent);
    void buildVolumeLevel(float percent);
    [[nodiscard]] bool volumeLevelIsShown() const;
    [[nodiscard]] double statusItemDisplayWidth();
    void holdVolumeLevel(double extraDelay);
    void fadeVolumeLevelOut();
    void dismissVolumeLevelAtOnce();
    void restoreStatusButton();

    static std::weak_ptr<AppDelegate> shared_;

    Platform& platform_;
    std::function<void()> startToolHub_;
    std::function<void()> endToolHub_;

    std::shared_ptr<StatusItem> statusBarItem_;
    std::unique_ptr<Popover> popover_;
    EventMonitorRef eventMonitor_;
    TimerRef volumeMenuBarRestoreWorkItem_;
    TimerRef volumeHUDDebounceWorkItem_;
    std::optional<float> volumeHUDQueuedPercent_;
    double volumeHUDLastFlushUptime_ = 0;
    static constexpr double volumeHUDMinUpdateInterval = 0.09;
    std::int64_t volumeHUDDismissFadeGeneration_ = 0;
    std::weak_ptr<View> volumeHUDContainer_;
    std::weak_ptr<VolumeBarMenuBarButton> volumeHUDBarButton_;
    double statusBarDisplayWidth_ = squareStatusItemLength; // points
    std::optional<std::chrono::system_clock::time_point> suppressOutsideClosePopoverUntil_;
    static constexpr double volumeHUDFadeDuration = 0.2; // seconds, as those below
    static constexpr double volumeHUDHoldDuration = 1.5;
    std::unique_ptr<UpdaterController> updaterController_;
};

} // namespace quillon
