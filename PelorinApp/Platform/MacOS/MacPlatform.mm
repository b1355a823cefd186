#include "Platform/MacOS/MacPlatform.h"

#include "Platform/MacOS/MacAccessibility.h"
#include "Platform/MacOS/MacAccessibilityElements.h"
#include "Platform/MacOS/MacAlerts.h"
#include "Platform/MacOS/MacAnimator.h"
#include "Platform/MacOS/MacApplication.h"
#include "Platform/MacOS/MacApplications.h"
#include "Platform/MacOS/MacAudioHardware.h"
#include "Platform/MacOS/MacBundle.h"
#include "Platform/MacOS/MacDisplays.h"
#include "Platform/MacOS/MacDynamicLibraries.h"
#include "Platform/MacOS/MacEventMonitors.h"
#include "Platform/MacOS/MacEventServices.h"
#include "Platform/MacOS/MacFileManager.h"
#include "Platform/MacOS/MacImages.h"
#include "Platform/MacOS/MacLoginItem.h"
#include "Platform/MacOS/MacMenus.h"
#include "Platform/MacOS/MacPopovers.h"
#include "Platform/MacOS/MacRunLoop.h"
#include "Platform/MacOS/MacScriptingService.h"
#include "Platform/MacOS/MacStatusBar.h"
#include "Platform/MacOS/MacUpdaters.h"
#include "Platform/MacOS/MacUrlSession.h"
#include "Platform/MacOS/MacUserDefaults.h"
#include "Platform/MacOS/MacWindowServer.h"
#include "Platform/MacOS/MacWorkspace.h"
#include "Platform/MacOS/NativeViews.h"
#include "Platform/MacOS/QuickContent.h"
#include "Platform/Posix/StandardOutput.h"

#include <utility>

namespace quillon {

struct MacPlatform::Services {
    explicit Services(QuickScreens screens)
        : popovers(runLoop, views,
                   [screens = std::move(screens)](std::string_view screen,
                                                  PopoverContentHandlers handlers) {
                       return std::make_unique<QuickContent>(screens(screen), std::move(handlers));
                   }) {}

    StandardOutput diagnostics;
    MacRunLoop runLoop;
    MacEventServices events{runLoop};
    MacDisplays displays;
    MacAccessibility accessibility;
    MacScriptingService scripting;
    MacUserDefaultsStores userDefaults{diagnostics};
    MacBundle bundle;
    MacEventMonitors monitors;
    MacApplications applications;
    MacWindowServer windowServer;
    MacAccessibilityElements accessibilityElements;
    MacDynamicLibraries libraries;
    MacAudioHardware audio;
    MacUrlSession urls{runLoop};
    MacFileManager files;
    NativeViews views;
    MacApplication application{views};
    MacStatusBar statusBar{views};
    MacImages images;
    MacAnimator animator{views};
    MacPopovers popovers;
    MacMenus menus{views};
    MacAlerts alerts;
    MacLoginItem loginItem;
    MacUpdaters updaters{views};
    MacWorkspace workspace;
    Platform platform{.runLoop = runLoop,
                      .events = events,
                      .displays = displays,
                      .accessibility = accessibility,
                      .scripting = scripting,
                      .userDefaults = userDefaults,
                      .bundle = bundle,
                      .diagnostics = diagnostics,
                      .monitors = monitors,
                      .applications = applications,
                      .windowServer = windowServer,
                      .accessibilityElements = accessibilityElements,
                      .libraries = libraries,
                      .audio = audio,
                      .urls = urls,
                      .files = files,
                      .application = application,
                      .statusBar = statusBar,
                      .images = images,
                      .animator = animator,
                      .popovers = popovers,
                      .menus = menus,
                      .alerts = alerts,
                      .loginItem = loginItem,
                      .updaters = updaters,
                      .workspace = workspace};
};

MacPlatform::MacPlatform(QuickScreens screens)
    : services_(std::make_unique<Services>(std::move(screens))) {}

MacPlatform::~MacPlatform() = default;

void MacPlatform::willTerminate() { services_->application.willTerminate(); }

Platform& MacPlatform::services() { return services_->platform; }

} // namespace quillon
