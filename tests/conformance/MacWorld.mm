#include "World.h"

#include "FakeAccessibility.h"
#include "FakeApplication.h"
#include "FakeAudio.h"
#include "FakeDefaults.h"
#include "FakeDesktop.h"
#include "FakeDispatch.h"
#include "FakeEvents.h"
#include "FakeImages.h"
#include "FakeInstallation.h"
#include "FakeLibraries.h"
#include "FakeMenus.h"
#include "FakeNativeEvents.h"
#include "FakeScripts.h"
#include "FakeStatusBar.h"
#include "FakeTimers.h"
#include "FakeUrls.h"
#include "FakeWindows.h"

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
#include "Platform/TouchLibrary.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <utility>

/// An event of which only its type is known.
@interface TypedEvent : NSObject {
    NSEventType type_;
}
- (instancetype)initWithType:(NSEventType)type;
- (NSEventType)type;
@end

@implementation TypedEvent
- (instancetype)initWithType:(NSEventType)type {
    self = [super init];
    type_ = type;
    return self;
}
- (NSEventType)type {
    return type_;
}
@end

namespace quillon {
namespace {

using namespace fakes;

namespace fs = std::filesystem;

/// The fakes begin anew, before there are services.
struct NewFakes {
    NewFakes() {
        fakeAccessibility().reset();
        fakeApplication().reset();
        fakeAudio().reset();
        fakeDefaults().reset();
        fakeDesktop().reset();
        fakeDispatch().reset();
        fakeEvents().reset();
        fakeImages().reset();
        fakeInstallation().reset();
        fakeLibraries().reset();
        fakeMenus().reset();
        fakeNativeEvents().reset();
        fakeScripts().reset();
        fakeStatusBar().reset();
        fakeTimers().reset();
        fakeUrls().reset();
        fakeWindows().reset();
    }
};

/// Time of the fakes: what waits for a moment runs when it has come.
class FakeTime {
  public:
    /// All that can be done now.
    void settle() {
        int ran = 0;
        do {
            ran = fakeDispatch().main.run() + fakeDispatch().global.run();
            for (std::size_t i = 0; i < fakeDispatch().made.size(); ++i) {
                ran += fakeDispatch().made[i]->run();
            }
        } while (ran > 0);
        takeNew();
    }

    void advance(std::int64_t nanoseconds) {
        now_ += nanoseconds;
        constexpr double nanosecondsPerSecond = 1e9;
        fakeTimers().uptime = static_cast<double>(now_) / nanosecondsPerSecond;
        while (!afters_.empty() && afters_.begin()->first <= now_) {
            const auto after = afters_.extract(afters_.begin()).mapped();
            after.piece.work(after.piece.context);
        }
        // The fakes know no times, so each timer goes off when the latest one is due.
        if (fakeTimers().validCount() > 0 && now_ >= nextFire_) {
            nextFire_ += interval_;
            fakeTimers().fire();
        }
    }

  private:
    void takeNew() {
        for (const auto& after : std::exchange(fakeDispatch().afters, {})) {
            afters_.emplace(now_ + static_cast<std::int64_t>(after.when), after);
        }
        if (fakeTimers().schedules.size() > timersSeen_) {
            timersSeen_ = fakeTimers().schedules.size();
            constexpr double nanosecondsPerSecond = 1e9;
            interval_ = static_cast<std::int64_t>(fakeTimers().schedules.back().interval *
                                                  nanosecondsPerSecond);
            nextFire_ = now_ + interval_;
        }
    }

    std::int64_t now_ = 0; // nanoseconds
    std::multimap<std::int64_t, FakeDispatch::After> afters_;
    std::size_t timersSeen_ = 0;
    std::int64_t interval_ = 0;
    std::int64_t nextFire_ = 0;
};

class SilentDiagnostics final : public Diagnostics {
  public:
    void line(std::string_view /*text*/) override {}
};

class MacWorld final : public World {
  public:
    explicit MacWorld(const Circumstances& circumstances) {
        fakeAccessibility().isTrusted = circumstances.isTrusted;
        fakeEvents().grantsTaps = circumstances.isTrusted;
        fakeEvents().onArrival = [](CGEventRef event) { tellMonitors(recordOf(event)); };
        fakeDesktop().screens = {{{0, 0}, {1440, 900}}};
        fakeImages().assets = {"MenuBarLogo"};
        if (circumstances.hasSound) {
            fakeAudio().set<AudioObjectID>(
                {audioSystemObject, fourCharCode("dOut"), audioScopeGlobal, 0}, device);
            setOutputVolume(0.5);
            setOutputMuted(false);
        }
        fakeInstallation().bundleIdentifier = "com.pelorin.PelorinApp";
        for (const auto& [key, text] : circumstances.information) {
            fakeInstallation().setInfo(key, (void*)stringOf(text));
        }
        if (!circumstances.numberKey.empty()) {
            fakeInstallation().setInfo(circumstances.numberKey,
                                       (void*)[NSNumber numberWithDouble:7]);
        }
        fakeInstallation().searchPaths = {(folder_.path() / "support").string()};
        fakeInstallation().temporaryFolder = folder_.path().string();
        fs::create_directory(folder());
        fakeLibraries().files[touchLibraryPath] = QUILLON_TOUCH_LIBRARY_FILE;
    }

    [[nodiscard]] Platform& platform() override { return platform_; }

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) override {
        constexpr std::int64_t step = 1'000'000; // nanoseconds
        constexpr int limit = 20'000;            // steps
        for (int i = 0; i < limit; ++i) {
            tend();
            time_.settle();
            if (condition()) {
                return true;
            }
            time_.advance(step);
        }
        return false;
    }

    void movePointer(Point place) override {
        fakeNativeEvents().mouseLocation = {place.x, place.y};
        fakeEvents().pointer = {place.x, mainScreen().height - place.y};
    }
    void press(MouseButton button) override {
        fakeEvents().press(static_cast<CGMouseButton>(button));
    }
    void release(MouseButton button) override {
        fakeEvents().release(static_cast<CGMouseButton>(button));
    }
    void scroll(int lines) override {
        constexpr double pointsPerLine = 10;
        fakeEvents().scroll({{kCGScrollWheelEventDeltaAxis1, lines},
                             {kCGScrollWheelEventFixedPtDeltaAxis1, lines},
                             {kCGScrollWheelEventPointDeltaAxis1, lines * pointsPerLine}});
    }

    [[nodiscard]] std::vector<std::string> received() override {
        std::vector<std::string> all;
        for (const EventRecord& event : fakeEvents().arrived) {
            if (event.type == kCGEventScrollWheel) {
                all.push_back("scroll " + std::to_string(static_cast<int>(
                                              event.field(kCGScrollWheelEventDeltaAxis1))));
            } else {
                all.push_back((isPress(event) ? "press " : "release ") +
                              std::to_string(buttonOf(event)));
            }
        }
        return all;
    }

    [[nodiscard]] Rect mainScreen() override {
        const CGRect screen = fakeDesktop().screens.front();
        return {screen.origin.x, screen.origin.y, screen.size.width, screen.size.height};
    }
    void splitScreen() override {
        const Rect whole = mainScreen();
        fakeDesktop().screens = {{{0, 0}, {whole.width / 2, whole.height}},
                                 {{-whole.width / 2, 0}, {whole.width / 2, whole.height}}};
    }

    void openWindow(ProcessId process, const std::string& name) override {
        fakeWindows().windows->insert(fakeWindows().windows->begin(),
                                      {.ownerProcess = process,
                                       .ownerName = name,
                                       .layer = 0,
                                       .bounds = CGRect{{100, 50}, {300, 200}},
                                       .isOnScreen = true});
        auto& windows = fakeAccessibility().windows[process];
        windows.insert(windows.begin(), std::to_string(windows.size()));
        auto& apps = fakeDesktop().apps;
        if (std::none_of(apps.begin(), apps.end(),
                         [&](const auto& app) { return app.process == process; })) {
            apps.push_back({.process = process, .name = name});
        }
        fakeDesktop().frontmost = process;
    }
    void endProgram(ProcessId process) override {
        std::erase_if(*fakeWindows().windows, [&](const FakeListedWindow& window) {
            return window.ownerProcess == process;
        });
        fakeAccessibility().windows.erase(process);
        std::erase_if(fakeDesktop().apps, [&](const auto& app) { return app.process == process; });
        if (fakeDesktop().frontmost == process) {
            fakeDesktop().frontmost.reset();
        }
    }

    [[nodiscard]] double outputVolume() override {
        return static_cast<double>(fakeAudio().value<float>(volumePlace).value());
    }
    void setOutputVolume(double volume) override {
        fakeAudio().set(volumePlace, static_cast<float>(volume));
    }
    [[nodiscard]] bool isOutputMuted() override {
        return fakeAudio().value<UInt32>(mutePlace).value() != 0;
    }
    void setOutputMuted(bool muted) override { fakeAudio().set(mutePlace, UInt32{muted}); }

    [[nodiscard]] UserDefaultsStores& restartedDefaults() override {
        return *(restarted_ = std::make_unique<MacUserDefaultsStores>(diagnostics_));
    }

    [[nodiscard]] std::string serve(const Serving& serving) override {
        const std::string url = "http://server.example/" + std::to_string(servings_.size());
        servings_.emplace(url, serving);
        return url;
    }
    [[nodiscard]] std::string deadAddress() override { return "http://nobody.example/"; }

    [[nodiscard]] fs::path folder() override { return folder_.path() / "files"; }
    void putFile(const fs::path& path, const std::string& content) override {
        writeFile(path, content);
    }
    void putLink(const fs::path& path, const fs::path& target) override {
        fs::create_symlink(target, path);
    }
    [[nodiscard]] std::optional<std::string> fileContent(const fs::path& path) override {
        return fs::is_regular_file(fs::symlink_status(path)) ? std::optional(readFile(path))
                                                             : std::nullopt;
    }

    [[nodiscard]] std::string brokenScript() override {
        fakeScripts().compiles = false;
        return "tell nobody to";
    }
    [[nodiscard]] int desktopsMovedRight() override {
        const auto& executed = fakeScripts().executed;
        return fakeScripts().failure
                   ? 0
                   : static_cast<int>(std::count_if(
                         executed.begin(), executed.end(), [](const std::string& source) {
                             return source.find("key code 124") != std::string::npos;
                         }));
    }
    void failScripts() override { fakeScripts().failure = "Not authorised."; }

    void clickStatusItem(MouseButton button) override {
        const bool isLeft = button == MouseButton::left;
        const FakeStatusItem& item = fakeStatusItem(fakeStatusBar().items.back());
        NSControl* control = item.view == nil
                                 ? static_cast<NSControl*>(item.button)
                                 : static_cast<NSControl*>([[item.view subviews] firstObject]);
        for (const auto type : {isLeft ? NSEventTypeLeftMouseDown : NSEventTypeRightMouseDown,
                                isLeft ? NSEventTypeLeftMouseUp : NSEventTypeRightMouseUp}) {
            fakeApplication().currentEvent = (NSEvent*)(id)[[TypedEvent alloc] initWithType:type];
            use(control, type);
            fakeApplication().currentEvent = nil;
        }
    }
    [[nodiscard]] bool isStatusItemShown() override {
        const auto& items = fakeStatusBar().items;
        return !items.empty() && !fakeStatusItem(items.back()).isRemoved;
    }

    void willTakeFirstItem() override {
        fakeMenus().whileShown = [] { choose(fakeMenu(fakeMenus().shown).items.front()); };
    }

  private:
    static constexpr AudioObjectID device = 77;
    static constexpr FakeAudio::Place volumePlace{device, fourCharCode("vmvc"), audioScopeOutput,
                                                  0};
    static constexpr FakeAudio::Place mutePlace{device, fourCharCode("mute"), audioScopeOutput, 0};

    static bool isPress(const EventRecord& event) {
        return event.type == kCGEventLeftMouseDown || event.type == kCGEventRightMouseDown ||
               event.type == kCGEventOtherMouseDown;
    }
    static int buttonOf(const EventRecord& event) {
        switch (event.type) {
        case kCGEventLeftMouseDown:
        case kCGEventLeftMouseUp:
            return 0;
        case kCGEventRightMouseDown:
        case kCGEventRightMouseUp:
            return 1;
        default:
            return 2;
        }
    }

    /// The system reports to monitors what comes through the taps.
    static void tellMonitors(const EventRecord& event) {
        FakeNativeEvents::Happening happening{
            .type = event.type,
            .sourceUserData = static_cast<std::int64_t>(event.field(kCGEventSourceUserData))};
        if (event.type == kCGEventScrollWheel) {
            happening.deltaY = event.field(kCGScrollWheelEventDeltaAxis1);
            happening.scrollingDeltaY = happening.deltaY;
        } else {
            happening.buttonNumber = buttonOf(event);
        }
        fakeNativeEvents().happen(happening);
    }

    /// The other programs and the servers do what is theirs.
    void tend() {
        for (const auto& activation : std::exchange(fakeDesktop().activations, {})) {
            const auto& apps = fakeDesktop().apps;
            if (std::any_of(apps.begin(), apps.end(),
                            [&](const auto& app) { return app.process == activation.process; })) {
                fakeDesktop().frontmost = activation.process;
                std::stable_partition(
                    fakeWindows().windows->begin(), fakeWindows().windows->end(),
                    [&](const auto& window) { return window.ownerProcess == activation.process; });
            }
        }
        for (; fetchesSeen_ < fakeUrls().fetches.size(); ++fetchesSeen_) {
            answer(fetchesSeen_);
        }
    }

    void answer(std::size_t fetch) {
        const auto isOver = [fetch] { return fakeUrls().fetches[fetch].cancels > 0; };
        std::string url = fakeUrls().fetches[fetch].url;
        for (auto found = servings_.find(url);
             !isOver() && found != servings_.end() && !found->second.location.empty();
             found = servings_.find(url)) {
            const std::string from = std::exchange(url, found->second.location);
            if (!fakeUrls().redirect(fetch, from, url) && !isOver()) {
                fakeUrls().respond(fetch, found->second.status);
                fakeUrls().complete(fetch);
                return;
            }
        }
        if (isOver()) {
            fakeUrls().complete(fetch, "cancelled");
            return;
        }
        const auto found = servings_.find(url);
        if (found == servings_.end()) {
            fakeUrls().complete(fetch, "Could not connect to the server.");
        } else if (!found->second.isSilent) {
            fakeUrls().respond(fetch, found->second.status);
            fakeUrls().send(fetch, found->second.body);
            fakeUrls().complete(fetch,
                                isOver() ? std::optional<std::string>("cancelled") : std::nullopt);
        }
    }

    NewFakes fakes_; // first
    TemporaryFolder folder_;
    FakeTime time_;
    std::map<std::string, Serving> servings_; // by address
    std::size_t fetchesSeen_ = 0;
    SilentDiagnostics diagnostics_;
    MacRunLoop runLoop_;
    MacEventServices events_{runLoop_};
    MacDisplays displays_;
    MacAccessibility accessibility_;
    MacScriptingService scripting_;
    MacUserDefaultsStores userDefaults_{diagnostics_};
    std::unique_ptr<MacUserDefaultsStores> restarted_;
    MacBundle bundle_;
    MacEventMonitors monitors_;
    MacApplications applications_;
    MacWindowServer windowServer_;
    MacAccessibilityElements accessibilityElements_;
    MacDynamicLibraries libraries_;
    MacAudioHardware audio_;
    MacUrlSession urls_{runLoop_};
    MacFileManager files_;
    NativeViews views_;
    MacApplication application_{views_};
    MacStatusBar statusBar_{views_};
    MacImages images_;
    MacAnimator animator_{views_};
    MacPopovers popovers_{runLoop_, views_, [](std::string_view, PopoverContentHandlers) {
                              return std::unique_ptr<PopoverContent>();
                          }};
    MacMenus menus_{views_};
    MacAlerts alerts_;
    MacLoginItem loginItem_;
    MacUpdaters updaters_{views_};
    MacWorkspace workspace_;
    Platform platform_{.runLoop = runLoop_,
                       .events = events_,
                       .displays = displays_,
                       .accessibility = accessibility_,
                       .scripting = scripting_,
                       .userDefaults = userDefaults_,
                       .bundle = bundle_,
                       .diagnostics = diagnostics_,
                       .monitors = monitors_,
                       .applications = applications_,
                       .windowServer = windowServer_,
                       .accessibilityElements = accessibilityElements_,
                       .libraries = libraries_,
                       .audio = audio_,
                       .urls = urls_,
                       .files = files_,
                       .application = application_,
                       .statusBar = statusBar_,
                       .images = images_,
                       .animator = animator_,
                       .popovers = popovers_,
                       .menus = menus_,
                       .alerts = alerts_,
                       .loginItem = loginItem_,
                       .updaters = updaters_,
                       .workspace = workspace_};
};

} // namespace

std::unique_ptr<World> makeWorld(const Circumstances& circumstances) {
    return std::make_unique<MacWorld>(circumstances);
}

} // namespace quillon
