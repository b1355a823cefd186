// The context menu and what its items do.

#include "AppDelegate.h"

#include <QUrl>

#include <utility>

namespace quillon {

namespace {

std::shared_ptr<MenuItem> item(std::string title, Action action, std::string keyEquivalent = {}) {
    auto made = std::make_shared<MenuItem>();
    made->title = std::move(title);
    made->action = std::move(action);
    made->keyEquivalent = std::move(keyEquivalent);
    return made;
}

Alert loginAlert(std::string informativeText) {
    return {AlertStyle::warning,
            "Could Not Update Launch at Login",
            std::move(informativeText),
            {"OK"}};
}

} // namespace

void AppDelegate::showContextMenu() {
    const auto view = statusItemView();
    if (!view) {
        return;
    }
    updaterController();
    if (const auto event = platform_.application.currentEvent()) {
        platform_.menus.popUpContextMenu(contextMenu(), *event, *view);
    } else {
        platform_.menus.popUp(contextMenu(), {0, view->bounds().height}, *view);
    }
}

std::shared_ptr<Menu> AppDelegate::contextMenu() {
    auto updates =
        item("Check for Updates...", action("checkForUpdates:", &AppDelegate::checkForUpdates));

    auto launchAtLogin =
        item("Launch at Login", action("toggleLaunchAtLogin:", &AppDelegate::toggleLaunchAtLogin));
    launchAtLogin->isEnabled = platform_.loginItem.isSupported();
    launchAtLogin->hasCheckMark = launchAtLogin->isEnabled && platform_.loginItem.isEnabled();

    auto support = item("Support", {"openSupport", [weak = weak_from_this()](Sender*) {
                                        if (const auto self = weak.lock()) {
                                            self->openSupport();
                                        }
                                    }});

    auto separator = std::make_shared<MenuItem>();
    separator->isSeparator = true;

    auto quit = item("Quit", action("quitFromStatusMenu:", &AppDelegate::quitFromStatusMenu), "q");

    auto menu = std::make_shared<Menu>();
    menu->items = {std::move(updates), std::move(launchAtLogin), std::move(support),
                   std::move(separator), std::move(quit)};
    return menu;
}

void AppDelegate::checkForUpdates(Sender* sender) { updaterController().checkForUpdates(sender); }

void AppDelegate::toggleLaunchAtLogin(Sender* sender) {
    LoginItem& service = platform_.loginItem;
    if (!service.isSupported()) {
        platform_.alerts.runModal(loginAlert("Launch at Login requires macOS 13 or later."));
        return;
    }
    const auto failure =
        service.isEnabled() ? service.unregisterService() : service.registerService();
    if (failure) {
        platform_.alerts.runModal(loginAlert(*failure));
        return;
    }
    if (auto* menuItem = dynamic_cast<MenuItem*>(sender)) {
        menuItem->hasCheckMark = service.isEnabled();
    }
}

void AppDelegate::openSupport() {
    const std::string address = platform_.bundle.infoString("SupportURL").value_or("");
    const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    if (url.isValid() && !url.isRelative()) {
        platform_.workspace.open(address);
    }
}

void AppDelegate::quitFromStatusMenu(Sender* sender) { platform_.application.terminate(sender); }

} // namespace quillon
