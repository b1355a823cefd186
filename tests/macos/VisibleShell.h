#pragma once

#include "AppDelegate.h"
#include "FakeAlerts.h"
#include "FakeAnimations.h"
#include "FakeApplication.h"
#include "FakeImages.h"
#include "FakeMenus.h"
#include "FakePopovers.h"
#include "FakeStatusBar.h"
#include "FakeText.h"
#include "Platform/MacOS/MacAlerts.h"
#include "Platform/MacOS/MacAnimator.h"
#include "Platform/MacOS/MacApplication.h"
#include "Platform/MacOS/MacImages.h"
#include "Platform/MacOS/MacMenus.h"
#include "Platform/MacOS/MacPopovers.h"
#include "Platform/MacOS/MacStatusBar.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// An event of which only its type is known.
@interface EventOfType : NSObject {
    NSEventType type_;
}
- (instancetype)initWithType:(NSEventType)type;
- (NSEventType)type;
@end

namespace quillon {

/// What a popover shows, in the hands of a test.
class ContentInHand final : public PopoverContent {
  public:
    struct State {
        NSView* view = nil;
        Size size{360, 480};
        bool isVisible = false;
        bool hasSheet = false;
        int timesMade = 0;
        std::string screen;
        PopoverContentHandlers handlers;
    };
    explicit ContentInHand(State& state) : state_(state) {}
    [[nodiscard]] void* nativeView() override { return (void*)state_.view; }
    [[nodiscard]] Size size() const override { return state_.size; }
    void setVisible(bool visible) override { state_.isVisible = visible; }
    [[nodiscard]] bool hasAttachedSheet() const override { return state_.hasSheet; }

  private:
    State& state_;
};

/// The shell on what people see of macOS, all else being simulated.
class VisibleShell {
  public:
    /// `ownLoginItem` in place of the simulated one.
    explicit VisibleShell(LoginItem* ownLoginItem = nullptr) : ownLoginItem_(ownLoginItem) {
        fakes::fakeStatusBar().reset();
        fakes::fakeMenus().reset();
        fakes::fakeImages().reset();
        fakes::fakeAnimations().reset();
        fakes::fakeApplication().currentEvent = nil;
        fakes::fakeApplication().terminations.clear();
        fakes::fakePopovers().clear();
        fakes::fakeAlerts().clear();
        fakes::drawnTexts().clear();
        fakes::fakeImages().assets = {"MenuBarLogo"};
        fakes::fakeImages().symbols = {"wrench.and.screwdriver"};
        Platform::setCurrent(&platform);
    }
    ~VisibleShell() { Platform::setCurrent(nullptr); }
    VisibleShell(const VisibleShell&) = delete;
    VisibleShell& operator=(const VisibleShell&) = delete;

    void launch() {
        delegate = AppDelegate::create(
            platform, [] {}, [this] { ++timesEnded; });
        application.setDelegate(delegate);
        [fakes::fakeApplication().delegate applicationDidFinishLaunching:nil];
        desktop.runLoop.drain();
    }

    [[nodiscard]] NSStatusItem* item() const { return fakes::fakeStatusBar().items.back(); }
    [[nodiscard]] NSStatusBarButton* button() const { return [item() button]; }
    [[nodiscard]] NSView* container() const { return fakes::fakeStatusItem(item()).view; }
    [[nodiscard]] NSButton* level() const {
        return static_cast<NSButton*>([[container() subviews] firstObject]);
    }
    [[nodiscard]] NSPopover* popover() const { return fakes::fakePopovers().back(); }
    [[nodiscard]] NSMenuItem* menuItem(std::size_t index) const {
        return fakes::fakeMenu(fakes::fakeMenus().shown).items.at(index);
    }

    /// The user does this on the control.
    bool use(NSControl* control, NSEventType event) {
        fakes::fakeApplication().currentEvent =
            (NSEvent*)(id)[[EventOfType alloc] initWithType:event];
        const bool wasUsed = fakes::use(control, event);
        fakes::fakeApplication().currentEvent = nil;
        desktop.runLoop.drain();
        return wasUsed;
    }
    void showLevel(float percent) {
        AppDelegate::showVolumeLevel(percent);
        desktop.runLoop.drain();
    }

    /// For timers and animations.
    void pass(double seconds) {
        desktop.runLoop.advance(seconds);
        fakes::fakeAnimations().advance(seconds);
        desktop.runLoop.drain();
    }

  private:
    LoginItem* const ownLoginItem_;

  public:
    std::vector<std::string> lines;
    ContentInHand::State content;
    SimulatedDesktop desktop{[this](std::string_view kind, const std::string& detail) {
        lines.push_back(std::string(kind) + " " + detail);
    }};
    NativeViews views;
    MacApplication application{views};
    MacStatusBar statusBar{views};
    MacImages images;
    MacAnimator animator{views};
    MacPopovers popovers{desktop.runLoop, views,
                         [this](std::string_view screen, PopoverContentHandlers handlers) {
                             ++content.timesMade;
                             content.view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
                             content.screen = screen;
                             content.handlers = std::move(handlers);
                             return std::make_unique<ContentInHand>(content);
                         }};
    MacMenus menus{views};
    MacAlerts alerts;
    Platform platform{.runLoop = desktop.runLoop,
                      .events = desktop.events,
                      .displays = desktop.displays,
                      .accessibility = desktop.accessibility,
                      .scripting = desktop.scripting,
                      .userDefaults = desktop.userDefaults,
                      .bundle = desktop.bundle,
                      .diagnostics = desktop.diagnostics,
                      .monitors = desktop.monitors,
                      .applications = desktop.windows,
                      .windowServer = desktop.windows,
                      .accessibilityElements = desktop.windows,
                      .libraries = desktop.touchLibrary,
                      .audio = desktop.audio,
                      .urls = desktop.urls,
                      .files = desktop.files,
                      .application = application,
                      .statusBar = statusBar,
                      .images = images,
                      .animator = animator,
                      .popovers = popovers,
                      .menus = menus,
                      .alerts = alerts,
                      .loginItem = ownLoginItem_ ? *ownLoginItem_ : desktop.loginItem,
                      .updaters = desktop.updaters,
                      .workspace = desktop.workspace};
    std::shared_ptr<AppDelegate> delegate;
    int timesEnded = 0;
};

} // namespace quillon
