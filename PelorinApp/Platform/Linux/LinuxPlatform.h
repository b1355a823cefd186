#pragma once

#include "Platform/Linux/QtApplication.h"
#include "Platform/Linux/applications/LinuxWindows.h"
#include "Platform/Linux/audio/PulseAudioHardware.h"
#include "Platform/Linux/keys/SpecialKeys.h"
#include "Platform/Linux/looks/DesktopLooks.h"
#include "Platform/Linux/session/AutostartLoginItem.h"
#include "Platform/Linux/session/DesktopWorkspace.h"
#include "Platform/Linux/session/InstalledFiles.h"
#include "Platform/Linux/session/LinuxLibraries.h"
#include "Platform/Linux/session/LinuxSession.h"
#include "Platform/Linux/tray/CurrentEvent.h"
#include "Platform/Linux/tray/LinuxImages.h"
#include "Platform/Linux/tray/LinuxStatusBar.h"
#include "Platform/Linux/tray/TrayContext.h"
#include "Platform/Linux/updates/FeedUpdaters.h"
#include "Platform/Linux/windows/QtAnimator.h"
#include "Platform/Linux/windows/QuickPopover.h"
#include "Platform/Linux/windows/ScreenWindow.h"
#include "Platform/Linux/windows/UpdateMessages.h"
#include "Platform/Linux/windows/WidgetAlerts.h"
#include "Platform/Linux/windows/WidgetMenus.h"
#include "Platform/Linux/x11/DesktopScripting.h"
#include "Platform/Linux/x11/X11Displays.h"
#include "Platform/Linux/x11/X11EventMonitors.h"
#include "Platform/Linux/x11/X11EventServices.h"
#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Platform.h"

#include <QUrl>

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace quillon {

/// The services of a Linux desktop. A QApplication must exist first, and so a display.
class LinuxPlatform {
  public:
    LinuxPlatform(LinuxSession& session, QuickScreens screens);
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    /// Whether this process is the same as before, with the program started anew. Until there is a
    /// platform.
    [[nodiscard]] static bool isStartedAgain();

    /// Says what will not work on this kind of session, if anything.
    void describeSession();

    /// Launches the application and runs until it is asked to end, or the X server goes (status
    /// 1), and sees what is still to be saved onto the disk.
    int run();

    /// The program was started again, by input at this X time where that is known.
    void reopen(std::optional<std::uint32_t> inputTime);

    [[nodiscard]] Platform& services() { return services_; }

  private:
    /// Ends the program, or starts it again where it is only the connection that is lost: somebody
    /// may have had a window of ours killed.
    [[noreturn]] void displayLost();
    void startAgain();
    void takeLook();
    [[nodiscard]] QuickScreen permissionsScreen(std::string_view name) const;
    void saveAll();
    [[nodiscard]] std::uint32_t inputTime() const;
    [[nodiscard]] std::optional<PixelPoint> eventPlace() const;

    LinuxSession& session_;
    long long lastRestart_; // uptime in milliseconds
    std::uint32_t reopenTime_ = 0;
    CurrentEvent currentEvent_;
    X11Displays displays_;
    X11Session server_;
    PostedEvents postedEvents_;
    CaughtPresses caughtPresses_;
    SpecialKeys keys_;
    X11EventServices events_;
    OwnWindows ownWindows_;
    X11EventMonitors monitors_;
    LinuxWindows windows_;
    LinuxLibraries libraries_;
    PulseAudioHardware audio_;
    DesktopScripting scripting_;
    QtApplication application_;
    TrayContext tray_;
    LinuxStatusBar statusBar_;
    LinuxImages images_;
    QtAnimator animator_;
    QuickScreens screens_;
    QuickPopovers popovers_;
    ScreenWindow permissions_;
    WidgetMenus menus_;
    WidgetAlerts alerts_;
    AutostartLoginItem loginItem_;
    DesktopWorkspace workspace_;
    DesktopLooks looks_;
    UpdateMessages updateMessages_;
    FeedUpdaters updaters_;
    Platform services_;
};

} // namespace quillon
