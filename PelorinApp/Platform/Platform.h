#pragma once

#include "Platform/Accessibility.h"
#include "Platform/AccessibilityElement.h"
#include "Platform/Alerts.h"
#include "Platform/Animator.h"
#include "Platform/Application.h"
#include "Platform/Applications.h"
#include "Platform/AudioHardware.h"
#include "Platform/Bundle.h"
#include "Platform/Diagnostics.h"
#include "Platform/Displays.h"
#include "Platform/DynamicLibraries.h"
#include "Platform/EventMonitors.h"
#include "Platform/EventServices.h"
#include "Platform/FileManager.h"
#include "Platform/Images.h"
#include "Platform/LoginItem.h"
#include "Platform/Menu.h"
#include "Platform/Popover.h"
#include "Platform/RunLoop.h"
#include "Platform/ScriptingService.h"
#include "Platform/StatusBar.h"
#include "Platform/Updater.h"
#include "Platform/UrlSession.h"
#include "Platform/UserDefaults.h"
#include "Platform/WindowServer.h"
#include "Platform/Workspace.h"

namespace quillon {

/// The services of the system that the program runs on. It outlives everything that is built on
/// it, the pieces of background work included.
struct Platform {
    RunLoop& runLoop;
    EventServices& events;
    Displays& displays;
    Accessibility& accessibility;
    ScriptingService& scripting;
    UserDefaultsStores& userDefaults;
    Bundle& bundle;
    Diagnostics& diagnostics;
    EventMonitors& monitors;
    Applications& applications;
    WindowServer& windowServer;
    AccessibilityElements& accessibilityElements;
    DynamicLibraries& libraries;
    AudioHardware& audio;
    UrlSession& urls;
    FileManager& files;

    // What people see.
    Application& application;
    StatusBar& statusBar;
    Images& images;
    Animator& animator;
    Popovers& popovers;
    Menus& menus;
    Alerts& alerts;
    LoginItem& loginItem;
    Updaters& updaters;
    Workspace& workspace;

    /// The platform of the process, for what is shared process-wide. main sets it, once, before
    /// anything asks for it.
    static Platform& current();
    [[nodiscard]] static bool isThere();
    static void setCurrent(Platform* platform);
};

} // namespace quillon
