#include "Platform/Linux/looks/DesktopLooks.h"

#include "Platform/Linux/x11/SelectionOwner.h"
#include "Platform/Linux/x11/X11Properties.h"

#include <algorithm>
#include <string>
#include <utility>

namespace quillon {

namespace {

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return text;
}

/// A theme's variants tell themselves apart by their names; those with "darker" in it have but dark
/// title bars.
bool isDarkTheme(const std::string& name) {
    const auto dark = name.find("dark");
    return (dark != std::string::npos && name.compare(dark, 6, "darker") != 0) ||
           name.find("inverse") != std::string::npos;
}

} // namespace

DesktopLook lookOf(const XSettings& settings) {
    DesktopLook look;
    look.options.shouldReduceMotion = settings.number("Gtk/EnableAnimations") == 0;
    if (const auto theme = settings.text("Net/ThemeName"); theme && !theme->empty()) {
        const std::string name = lowered(*theme);
        look.options.shouldIncreaseContrast = name.find("highcontrast") != std::string::npos;
        look.isDark = isDarkTheme(name);
    }
    return look;
}

DesktopLooks::DesktopLooks(std::function<void()> changed)
    : changed_(std::move(changed)), connection_(X11Connection::open()) {
    if (!connection_) {
        return;
    }
    selection_ = connection_->atom(selectionOfScreen("_XSETTINGS", *connection_));
    settings_ = connection_->atom("_XSETTINGS_SETTINGS");
    manager_ = connection_->atom("MANAGER");
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY; // new managers say so to the root
    xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK, &mask);
    takeSettings();
    notifier_ = std::make_unique<QSocketNotifier>(connection_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { readEvents(); });
}

void DesktopLooks::readEvents() {
    bool isConcerned = false;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        isConcerned = isConcerned || concernsSettings(*event);
    }
    if (connection_->isBroken()) {
        notifier_->setEnabled(false);
        return;
    }
    if (!isConcerned) {
        return;
    }
    const DesktopLook before = look_;
    takeSettings();
    if (look_ != before) {
        changed_();
    }
    // Reading may have brought in what no notifier tells of.
    QMetaObject::invokeMethod(
        notifier_.get(), [this] { readEvents(); }, Qt::QueuedConnection);
}

bool DesktopLooks::concernsSettings(const xcb_generic_event_t& event) const {
    switch (event.response_type & 0x7FU) {
    case XCB_CLIENT_MESSAGE: {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        return message.type == manager_ && message.format == 32 &&
               message.data.data32[1] == selection_;
    }
    case XCB_DESTROY_NOTIFY:
        return reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == owner_;
    case XCB_PROPERTY_NOTIFY:
        return reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == settings_;
    default:
        return false;
    }
}

void DesktopLooks::takeSettings() {
    owner_ = followSelectionOwner(*connection_, selection_).value_or(XCB_NONE);
    const auto bytes = owner_ == XCB_NONE ? std::nullopt : text(*connection_, owner_, settings_);
    look_ = lookOf(XSettings::parse(bytes.value_or("")));
}

} // namespace quillon
