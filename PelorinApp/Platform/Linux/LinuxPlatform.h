#pragma once

#include "Platform/Linux/session/ConfigHome.h"
#include "Platform/Linux/session/FileBundle.h"
#include "Platform/Linux/session/FileUserDefaults.h"
#include "Platform/Linux/session/InstalledFiles.h"
#include "Platform/Linux/session/QtRunLoop.h"
#include "Platform/Linux/session/StandardOutput.h"
#include "Platform/Linux/x11/DesktopScripting.h"
#include "Platform/Linux/x11/X11Displays.h"
#include "Platform/Linux/x11/X11EventServices.h"
#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Platform.h"

namespace quillon {

/// The services of a Linux desktop. A QCoreApplication must exist first.
class LinuxPlatform {
  public:
    LinuxPlatform();
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    /// Says what will not work on this kind of session, if anything.
    void describeSession();

    /// Runs until the program is asked to end, or the X server goes (status 1), and sees what is
    /// still to be saved onto the disk.
    int run();

    [[nodiscard]] Platform& services() { return services_; }
    [[nodiscard]] FileUserDefaultsStores& userDefaults() { return userDefaults_; }

  private:
    void displayLost();

    StandardOutput diagnostics_;
    FileBundle bundle_{diagnostics_};
    QtRunLoop runLoop_;
    FileUserDefaultsStores userDefaults_{configHome(), bundle_.identifier(), runLoop_,
                                         diagnostics_};
    X11Displays displays_;
    X11Session session_{diagnostics_, displays_, [this] { displayLost(); }};
    X11EventServices events_{runLoop_, diagnostics_, displays_,
                             [this] { return session_.isGranted(); },
                             helperProgram("quillon-watchdog")};
    DesktopScripting scripting_;
    Platform services_{runLoop_,   events_,       displays_, session_,
                       scripting_, userDefaults_, bundle_,   diagnostics_};
};

} // namespace quillon
