#include "AppDelegate.h"

#include <array>
#include <cmath>
#include <utility>

namespace quillon {

namespace {

constexpr const char* statusButtonToolTip = "Open Quillon — Right-click for menu";
constexpr const char* hubScreen = "ContentView";
constexpr std::uint64_t bothMouseButtons =
    eventMask(EventType::leftMouseUp) | eventMask(EventType::rightMouseUp);

/// A fade that was interrupted may have left less than this, which nobody sees.
constexpr double invisibleAlpha = 0.05;

std::optional<double> displayWidth(const View& view) {
    for (const double width :
         std::array{view.bounds().width, view.frame().width, view.fittingSize().width}) {
        if (std::isfinite(width) && width > 0) {
            return std::ceil(width);
        }
    }
    return std::nullopt;
}

std::optional<Image> iconImage(const Images& images) {
    constexpr Size logoSize{20, 20};
    constexpr Size symbolSize{18, 18};
    auto image = images.named("MenuBarLogo");
    const bool isLogo = image.has_value();
    if (!isLogo) {
        image = images.systemSymbol("wrench.and.screwdriver", "Tools");
    }
    if (image) {
        image->isTemplate = true;
        image->size = isLogo ? logoSize : symbolSize;
    }
    return image;
}

} // namespace

std::weak_ptr<AppDelegate> AppDelegate::shared_;

std::shared_ptr<AppDelegate> AppDelegate::create(Platform& platform,
                                                 std::function<void()> startToolHub,
                                                 std::function<void()> endToolHub) {
    return std::shared_ptr<AppDelegate>(
        new AppDelegate(platform, std::move(startToolHub), std::move(endToolHub)));
}

AppDelegate::AppDelegate(Platform& platform, std::function<void()> startToolHub,
                         std::function<void()> endToolHub)
    : platform_(platform), startToolHub_(std::move(startToolHub)),
      endToolHub_(std::move(endToolHub)) {}

void AppDelegate::applicationDidFinishLaunching() {
    shared_ = weak_from_this();
    platform_.diagnostics.line("🚀 App launched!");
    platform_.application.setActivationPolicy(ActivationPolicy::accessory);
    if (!createStatusItem()) {
        return;
    }
    createPopover();
    watchForOutsideClicks();
    updaterController();
    startToolHub_();
    platform_.diagnostics.line("✅ Setup complete! Look for the icon in your menu bar.");
}

bool AppDelegate::createStatusItem() {
    Diagnostics& diagnostics = platform_.diagnostics;
    diagnostics.line("📍 Creating status bar item...");
    statusBarItem_ = platform_.statusBar.statusItem(squareStatusItemLength);
    if (!statusBarItem_) {
        diagnostics.line("❌ Failed to create status bar item!");
        return false;
    }
    statusBarItem_->setVisible(true);
    diagnostics.line("✅ Status bar item created and set to visible");
    const auto button = statusBarItem_->button();
    if (!button) {
        diagnostics.line("❌ Failed to get status bar button!");
        return false;
    }
    applyIcon(*button);
    diagnostics.line("✅ Icon set successfully");
    setUpButton(*button);
    return true;
}

void AppDelegate::createPopover() {
    popover_ = platform_.popovers.make(hubScreen, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->togglePopover(nullptr);
        }
    });
    popover_->setBehavior(PopoverBehavior::applicationDefined);
}

void AppDelegate::watchForOutsideClicks() {
    eventMonitor_ = platform_.monitors.addGlobalMonitor(
        eventMask(EventType::leftMouseDown) | eventMask(EventType::rightMouseDown),
        [weak = weak_from_this(), &runLoop = platform_.runLoop](const MonitoredEvent&) {
            runLoop.async([weak] {
                if (const auto self = weak.lock()) {
                    self->closePopoverAfterOutsideClick();
                }
            });
        },
        {});
    if (eventMonitor_) {
        platform_.monitors.setInvalidationHandler(*eventMonitor_, [weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->watchForOutsideClicks();
            }
        });
    }
    listenForOutsideClicks(popover_ && popover_->isShown());
}

UpdaterController& AppDelegate::updaterController() {
    if (!updaterController_) {
        updaterController_ = platform_.updaters.makeController(true, weak_from_this());
    }
    return *updaterController_;
}

void AppDelegate::applyIcon(Button& button) {
    ButtonLook look = button.look();
    look.attributedTitle.clear();
    look.title.clear();
    look.contentTintColor.reset();
    look.image = iconImage(platform_.images);
    if (look.image) {
        look.imageScaling = ImageScaling::proportionallyDown;
        look.imagePosition = ImagePosition::imageOnly;
    } else {
        look.title = "🔧";
        look.titleFont = {14, FontWeight::medium, false};
        look.imagePosition = ImagePosition::noImage;
    }
    look.alignment = TextAlignment::center;
    button.setLook(std::move(look));
    if (ButtonCell* cell = button.cell()) {
        cell->alignment = TextAlignment::center;
    }
    measureDisplayWidth(button);
}

void AppDelegate::setUpButton(Button& button) {
    button.setAction(action("statusBarButtonPressed:", &AppDelegate::statusBarButtonPressed));
    button.setToolTip(statusButtonToolTip);
    button.setSendsActionOn(bothMouseButtons);
    button.setEnabled(true);
    button.setRefusesFirstResponder(false);
    ButtonLook look = button.look();
    look.alignment = TextAlignment::center;
    button.setLook(std::move(look));
    if (ButtonCell* cell = button.cell()) {
        cell->alignment = TextAlignment::center;
    }
}

Action AppDelegate::action(std::string name, void (AppDelegate::*perform)(Sender*)) {
    return {std::move(name), [weak = weak_from_this(), perform](Sender* sender) {
                if (const auto self = weak.lock()) {
                    (*self.*perform)(sender);
                }
            }};
}

void AppDelegate::measureDisplayWidth(const View& view) {
    if (const auto width = displayWidth(view)) {
        statusBarDisplayWidth_ = *width;
    }
}

void AppDelegate::applicationDidBecomeActive() {
    const auto button = statusBarItem_ ? statusBarItem_->button() : nullptr;
    if (!button) {
        return;
    }
    if (button->alphaValue() < invisibleAlpha) {
        button->setAlphaValue(1);
    }
    setUpButton(*button);
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() { return false; }

void AppDelegate::applicationWillTerminate() { endToolHub_(); }

std::optional<std::string> AppDelegate::feedURLStringForUpdater() { return std::nullopt; }

} // namespace quillon
